// Tab 2: the filters.

#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <memory>

#include "grids/ui/cDataGrid.h"
#include "marketing/ui/wizard_page.h"
#include "queries/filter_table.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace Ui {
class FilterPage;
}

namespace qbx {

class FilterPage : public WizardPage, private GridOwner {
 public:
  explicit FilterPage(PageParts parts);
  ~FilterPage() override;

  [[nodiscard]] QWidget* FirstControl() override;

 protected:
  void CopyState() override;

 private:
  /// The controls of a filter; null for one that it lacks.
  struct Controls {
    QCheckBox* tick = nullptr;
    QComboBox* condition = nullptr;
    QComboBox* list = nullptr;
    QLineEdit* text = nullptr;
    std::array<QLineEdit*, 2> numbers = {};
    QLabel* between = nullptr;  ///< the label "and"
    QLabel* note = nullptr;
  };

  void FindControls(const FilterRow& row);
  void ShowTip(const FilterRow& row);
  void ConnectChecks();
  void ConnectFilter(const FilterRow& row);
  void ConnectText(const FilterRow& row, QLineEdit* box, QString& value);
  void ShowFilter(const FilterRow& row);
  void ShowFilters(const FilterView& view);
  void FilterClicked();
  void ShowPending();
  void ShowNotes();
  void SetUpFirstRows();

  std::unique_ptr<Ui::FilterPage> ui_;
  std::array<Controls, kFilterCount> controls_;  // by filter number
  Recordset shown_;
  cDataGrid firstRows_;
};

}  // namespace qbx
