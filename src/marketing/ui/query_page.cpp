#include "marketing/ui/query_page.h"

#include <QComboBox>
#include <QDate>
#include <QLineEdit>
#include <QList>
#include <QListWidget>
#include <QPushButton>
#include <QString>
#include <QTreeWidget>
#include <QTreeWidgetItem>
#include <QWidget>

#include "marketing/ui/fill_combo.h"
#include "platform/ui/drawn_icon.h"
#include "platform/ui/letters.h"
#include "queries/query_catalogue.h"
#include "ui_query_page.h"

namespace qbx {
namespace {

constexpr int kIndexRole = Qt::UserRole;

}  // namespace

QueryPage::QueryPage(PageParts parts) : WizardPage(std::move(parts)), ui_(std::make_unique<Ui::QueryPage>()) {
  ui_->setupUi(this);
  BuildTree();
  ui_->cmbType->addItems(CampaignTypes());
  // There is no tab before this one.
  ui_->cmdBack0->setVisible(false);
  ConnectControls();
}

QueryPage::~QueryPage() = default;

QWidget* QueryPage::FirstControl() {
  return ui_->tvQuery;
}

void QueryPage::BuildTree() {
  const Drawing vehicles = App().startup.edition.boat ? Drawing::kBoats : Drawing::kVehicles;
  // Rows are measured when they are added; without the style sheet they would be too low.
  ui_->tvQuery->ensurePolished();
  for (const QueryNode& node : QueryTree(App().startup.edition.boat)) {
    auto* item = node.parent == 0 ? new QTreeWidgetItem(ui_->tvQuery) : new QTreeWidgetItem(nodes_.value(node.parent));
    item->setText(0, node.text);
    item->setData(0, kIndexRole, node.index);
    nodes_.insert(node.index, item);
    if (node.parent != 0) continue;
    item->setIcon(0, DrawnIcon(node.rows == RowsOf::kCustomers ? Drawing::kCustomers : vehicles));
    item->setExpanded(true);
  }
}

void QueryPage::ConnectControls() {
  // The selection counts, not the current item: getting the focus alone makes the first node current.
  connect(ui_->tvQuery, &QTreeWidget::itemSelectionChanged, this, [this] {
    const QList<QTreeWidgetItem*> chosen = ui_->tvQuery->selectedItems();
    if (Showing()) return;
    if (chosen.isEmpty()) return ShowState();  // its options are still shown, so the query stays chosen
    const int node = chosen.constFirst()->data(0, kIndexRole).toInt();
    Guarded([this, node] { Desk().selection.NodeClick(node); });
    ShowState();
  });
  connect(ui_->txtCriteria, &QLineEdit::textEdited, this,
          [this](const QString& text) { Edited(State().options.txtCriteria, text); });
  connect(ui_->txtCriteriaStart, &QLineEdit::textEdited, this,
          [this](const QString& text) { Edited(State().options.txtCriteriaStart, text); });
  connect(ui_->txtMakes, &QLineEdit::textEdited, this, [this](const QString& text) {
    Desk().selection.MakesTyped(text);
    ShowState();
  });
  // It is not stored, so it does not change the campaign.
  connect(ui_->cmbType, &QComboBox::currentTextChanged, this, [this](const QString& text) {
    if (!Showing()) State().options.cmbType = text;
  });
  connect(ui_->cmbReminder, &QComboBox::currentIndexChanged, this, [this](int position) {
    if (Showing()) return;
    State().options.cmbReminder = position;
    Desk().selection.Changed();
    ShowSelects();
  });
  connect(ui_->lstMakes, &QListWidget::itemSelectionChanged, this, [this] {
    if (Showing()) return;
    std::vector<bool> selected;
    selected.reserve(static_cast<size_t>(ui_->lstMakes->count()));
    for (int row = 0; row < ui_->lstMakes->count(); ++row)
      selected.push_back(ui_->lstMakes->item(row)->isSelected());
    Desk().selection.MakesClick(selected);
    ui_->txtMakes->setText(State().options.txtMakes);
    ShowSelects();
  });
  DateBox* const boxes[] = {ui_->dteDate0, ui_->dteDate1};
  for (size_t i = 0; i < std::size(boxes); ++i) {
    connect(boxes[i], &DateBox::Edited, this, [this, i, box = boxes[i]] {
      State().options.dteDate[i] = box->Date();
      State().options.dteDateHasText[i] = !box->text().trimmed().isEmpty();
      Desk().selection.Changed();
      ShowSelects();
    });
  }
  connect(ui_->cmdNext0, &QPushButton::clicked, this, [this] { Next(0); });
}

void QueryPage::Edited(QString& value, const QString& text) {
  if (Showing()) return;
  value = text;
  Desk().selection.Changed();
  ShowSelects();
}

void QueryPage::ShowSelects() {
  ui_->lblQuerySelects->setText(Desk().selection.Selects());
  const QString over = Desk().selection.DatesOver();
  ui_->lblDatesOver->setText(over);
  ui_->lblDatesOver->setVisible(!over.isEmpty());
}

void QueryPage::CampaignSetUp() {
  ui_->dteDate0->SetDate({});
  ui_->dteDate1->SetDate({});
}

void QueryPage::CopyState() {
  const WizardState& state = State();
  QTreeWidgetItem* node = nodes_.value(state.selectedNode);
  ui_->tvQuery->setCurrentItem(node);
  if (node == nullptr) ui_->tvQuery->clearSelection();
  if (node != nullptr) ui_->tvQuery->scrollToItem(node);
  // Options that were unknown at the start of the program may be known now.
  ui_->fraType->setVisible(App().options.Using_Vrelo);
  FillCombo(*ui_->cmbReminder, ReminderList(App().options));
  ui_->cmbReminder->setCurrentIndex(state.options.cmbReminder);
  ui_->cmbType->setCurrentIndex(ui_->cmbType->findText(state.options.cmbType));
  const std::pair<QLineEdit*, const QString&> texts[] = {{ui_->txtCriteria, state.options.txtCriteria},
                                                         {ui_->txtCriteriaStart, state.options.txtCriteriaStart},
                                                         {ui_->txtMakes, state.options.txtMakes}};
  for (const auto& [box, text] : texts) {
    if (box->text() != text) box->setText(text);
  }
  ShowDates();
  ShowMakes();
  ShowPanels();
}

// A text that is no date stays for the user to correct.
void QueryPage::ShowDates() {
  DateBox* const boxes[] = {ui_->dteDate0, ui_->dteDate1};
  for (size_t i = 0; i < std::size(boxes); ++i) {
    const QDate& date = State().options.dteDate[i];
    if (boxes[i]->Date() != date) boxes[i]->SetDate(date);
  }
}

void QueryPage::ShowMakes() {
  const WizardState& state = State();
  QListWidget& list = *ui_->lstMakes;
  bool same = static_cast<size_t>(list.count()) == state.lstMakes.size();
  for (int row = 0; same && row < list.count(); ++row)
    same = list.item(row)->text() == state.lstMakes[static_cast<size_t>(row)].text;
  if (!same) {
    list.clear();
    for (const ListRow& row : state.lstMakes)
      list.addItem(row.text);
  }
  for (int row = 0; row < list.count(); ++row) {
    const auto index = static_cast<size_t>(row);
    list.item(row)->setSelected(index < state.lstMakesSelected.size() && state.lstMakesSelected[index]);
  }
}

void QueryPage::ShowPanels() {
  const QueryPanels& panels = State().panels;
  ui_->txtQueryDesc->setPlainText(panels.txtQueryDesc);
  ui_->lblQueryOptions->setText(panels.lblQueryOptions);
  ui_->lblInfo1->setText(panels.lblInfo);
  ui_->cmdNext0->setEnabled(panels.cmdNextEnabled);
  ui_->fraPickStart->setVisible(panels.fraPickStart);
  ui_->fraDates->setVisible(panels.fraDates);
  ui_->fraMakes->setVisible(panels.fraMakes);
  ui_->fraCriteria->setVisible(panels.fraCriteria);
  ui_->fraReminder->setVisible(panels.fraReminder);
  ui_->fraOptionsText->setVisible(panels.fraOptionsText);
  ui_->lblCriteria->setText(WithLetter(panels.lblCriteria, 'o'));
  ui_->fraDates->setTitle(panels.fraDatesCaption);
  ui_->lblDate0->setText(WithLetter(panels.lblDateFrom, 'r'));
  ui_->lblDate1->setText(WithLetter(panels.lblDateTo, 't'));
  ui_->fraMakes->setTitle(panels.fraMakesCaption);
  ui_->Label1->setText(WithLetter(panels.fraMakesCaption + QLatin1Char(':'), 'e'));
  ui_->lblOptionsExample->setText(panels.lblOptionsExample);
  ShowSelects();
}

}  // namespace qbx
