#include "wizard/ui/filter_page.h"

#include "platform/ui/look.h"
#include "ui_filter_page.h"
#include "wizard/filters_pending.h"
#include "wizard/ui/fill_combo.h"

namespace qbx {
namespace {

QStringList Texts(const std::vector<ListRow>& rows) {
  QStringList texts;
  for (const ListRow& row : rows)
    texts += row.text;
  return texts;
}

/// Text in the normal colour, or greyed; nothing is disabled.
void ShowActive(QWidget& control, bool active) {
  QPalette colours;
  if (!active) {
    const QColor grey = QApplication::palette().color(QPalette::Disabled, QPalette::WindowText);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
      colours.setColor(role, grey);
  }
  control.setPalette(colours);
}

void ShowText(QLineEdit& box, const QString& text) {
  if (box.text() != text) box.setText(text);
}

}  // namespace

FilterPage::FilterPage(PageParts parts) : WizardPage(std::move(parts)), ui_(std::make_unique<Ui::FilterPage>()) {
  ui_->setupUi(this);
  chkFilter_ = {ui_->chkFilter0, ui_->chkFilter1, ui_->chkFilter2, ui_->chkFilter3, ui_->chkFilter4, ui_->chkFilter5};
  cmbFilter_ = {nullptr, ui_->cmbFilter1, ui_->cmbFilter2, ui_->cmbFilter3, ui_->cmbFilter4};
  const FilterCaptions captions = MakeFilterCaptions(App().startup.edition.boat);
  ui_->fraVehicleFilter->setTitle(captions.fraVehicleFilter);
  for (size_t filter = 0; filter < chkFilter_.size(); ++filter)
    chkFilter_[filter]->setText(captions.chkFilter[filter]);
  for (size_t filter = kFilterCustomerType; filter <= kFilterYear; ++filter)
    cmbFilter_[filter]->addItems(FilterConditions(static_cast<FilterIndex>(filter)));
  for (QLineEdit* box : {ui_->txtYear0, ui_->txtYear1, ui_->txtMileage0, ui_->txtMileage1})
    box->setMaxLength(12);
  ui_->cmdApplyFilters->setIcon(DrawnIcon(Drawing::kRefresh));
  ui_->cmdNext1->setToolTip(QStringLiteral("Apply Additional Filters and go to next step"));
  ConnectChecks();
  ConnectValues();
}

FilterPage::~FilterPage() = default;

QWidget* FilterPage::FirstControl() {
  return ui_->chkIncludeOptedOut;
}

void FilterPage::ConnectChecks() {
  connect(ui_->chkIncludeOptedOut, &QCheckBox::clicked, this, [this](bool ticked) {
    Desk().selection.IncludeOptedOutClick(ticked);
    ShowState();
  });
  for (size_t filter = 0; filter < chkFilter_.size(); ++filter) {
    connect(chkFilter_[filter], &QCheckBox::clicked, this, [this, filter](bool ticked) {
      State().filters.chkFilter[filter] = ticked;
      FilterClicked();
    });
  }
  for (size_t filter = kFilterCustomerType; filter <= kFilterYear; ++filter) {
    connect(cmbFilter_[filter], &QComboBox::currentIndexChanged, this, [this, filter](int position) {
      if (Showing()) return;
      State().filters.cmbFilter[filter] = position;
      FilterClicked();
    });
  }
  connect(ui_->cmdNext1, &QPushButton::clicked, this, [this] { Next(1); });
  connect(ui_->cmdBack1, &QPushButton::clicked, this, [this] { Back(1); });
  connect(ui_->cmdApplyFilters, &QPushButton::clicked, this, [this] {
    Run([this] { Desk().steps.Refresh(); });
    ShowState();
  });
  connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, ui_->cmdApplyFilters,
          &QPushButton::click);
}

void FilterPage::ConnectValues() {
  Filters& filters = State().filters;
  // The model is not stored, so it is no change of the campaign.
  connect(ui_->txtModel, &QLineEdit::textEdited, this, [this](const QString& text) {
    State().filters.txtModel = text;
    ShowPending();
  });
  const std::pair<QLineEdit*, QString*> boxes[] = {{ui_->txtYear0, &filters.txtYear[0]},
                                                   {ui_->txtYear1, &filters.txtYear[1]},
                                                   {ui_->txtMileage0, &filters.txtMileage[0]},
                                                   {ui_->txtMileage1, &filters.txtMileage[1]}};
  for (const auto& [box, value] : boxes) {
    connect(box, &QLineEdit::textEdited, this, [this, target = value](const QString& text) {
      *target = text;
      Desk().selection.Changed();
      ShowPending();
    });
  }
  const std::pair<QComboBox*, QString*> lists[] = {{ui_->cmbData1, &filters.cmbData1},
                                                   {ui_->cmbData2, &filters.cmbData2}};
  for (const auto& [list, value] : lists) {
    list->setInsertPolicy(QComboBox::NoInsert);
    connect(list, &QComboBox::editTextChanged, this, [this, target = value](const QString& text) {
      if (Showing()) return;
      *target = text;
      Desk().selection.Changed();
      ShowPending();
    });
  }
}

void FilterPage::FilterClicked() {
  ShowFilters(Desk().selection.FilterClick());
  ShowPending();
}

void FilterPage::ShowPending() {
  ui_->lblFiltersPending->setText(FiltersPendingText(State()));
}

void FilterPage::CopyState() {
  ShowPending();
  const Filters& filters = State().filters;
  ui_->chkIncludeOptedOut->setChecked(filters.chkIncludeOptedOut);
  for (size_t filter = 0; filter < chkFilter_.size(); ++filter)
    chkFilter_[filter]->setChecked(filters.chkFilter[filter]);
  for (size_t filter = kFilterCustomerType; filter <= kFilterYear; ++filter)
    cmbFilter_[filter]->setCurrentIndex(filters.cmbFilter[filter]);
  ShowLists();
  ShowText(*ui_->txtModel, filters.txtModel);
  ShowText(*ui_->txtYear0, filters.txtYear[0]);
  ShowText(*ui_->txtYear1, filters.txtYear[1]);
  ShowText(*ui_->txtMileage0, filters.txtMileage[0]);
  ShowText(*ui_->txtMileage1, filters.txtMileage[1]);
  ui_->lblRecords0->setText(State().lblRecords[0]);
  ui_->lblRecords1->setText(State().lblRecords[1]);
  ShowFilters(ShowFilterState(filters));
}

void FilterPage::ShowLists() {
  const WizardState& state = State();
  FillCombo(*ui_->cmbData1, Texts(state.cmbData1Items));
  FillCombo(*ui_->cmbData2, Texts(state.cmbData2Items));
  if (ui_->cmbData1->currentText() != state.filters.cmbData1) ui_->cmbData1->setCurrentText(state.filters.cmbData1);
  if (ui_->cmbData2->currentText() != state.filters.cmbData2) ui_->cmbData2->setCurrentText(state.filters.cmbData2);
}

void FilterPage::ShowFilters(const FilterView& view) {
  const std::initializer_list<QWidget*> controls[] = {{},
                                                      {ui_->cmbFilter1, ui_->cmbData1},
                                                      {ui_->cmbFilter2, ui_->cmbData2},
                                                      {ui_->cmbFilter3, ui_->txtMileage0, ui_->txtMileage1},
                                                      {ui_->cmbFilter4, ui_->txtYear0, ui_->txtYear1}};
  for (size_t filter = kFilterCustomerType; filter <= kFilterYear; ++filter) {
    for (QWidget* control : controls[filter])
      ShowActive(*control, view.active[filter]);
  }
  const bool mileage = State().filters.mileageVisible;
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->chkFilter3, ui_->cmbFilter3, ui_->txtMileage0})
    control->setVisible(mileage);
  ui_->lblAnd3->setVisible(mileage && view.mileageBetween);
  ui_->txtMileage1->setVisible(mileage && view.mileageBetween);
  ui_->lblAnd4->setVisible(view.yearBetween);
  ui_->txtYear1->setVisible(view.yearBetween);
}

}  // namespace qbx
