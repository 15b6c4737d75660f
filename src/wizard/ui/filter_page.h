// Tab 2: the filters.

#pragma once

#include <array>
#include <memory>

#include "wizard/ui/wizard_page.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace Ui {
class FilterPage;
}

namespace qbx {

class FilterPage : public WizardPage {
 public:
  explicit FilterPage(PageParts parts);
  ~FilterPage() override;

  [[nodiscard]] QWidget* FirstControl() override;

 protected:
  void CopyState() override;

 private:
  void ConnectChecks();
  void ConnectValues();
  void ShowLists();
  void ShowFilters(const FilterView& view);
  void FilterClicked();
  void ShowPending();

  std::unique_ptr<Ui::FilterPage> ui_;
  // By filter number; null where a filter has none.
  std::array<QCheckBox*, 6> chkFilter_;
  std::array<QComboBox*, 5> cmbFilter_;
};

}  // namespace qbx
