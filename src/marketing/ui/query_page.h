// Tab 1: the starting query and its options.

#pragma once

#include <QHash>
#include <QString>
#include <QWidget>
#include <memory>

#include "marketing/ui/wizard_page.h"

class QTreeWidgetItem;

namespace Ui {
class QueryPage;
}

namespace qbx {

class QueryPage : public WizardPage {
 public:
  explicit QueryPage(PageParts parts);
  ~QueryPage() override;

  void CampaignSetUp() override;
  [[nodiscard]] QWidget* FirstControl() override;

 protected:
  void CopyState() override;

 private:
  void BuildTree();
  void ConnectControls();
  void ShowPanels();
  void ShowMakes();
  void ShowDates();
  void ShowSelects();
  void Edited(QString& value, const QString& text);

  std::unique_ptr<Ui::QueryPage> ui_;
  QHash<int, QTreeWidgetItem*> nodes_;  // by query number
};

}  // namespace qbx
