#include "marketing/ui/filter_page.h"

#include <QApplication>
#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QShortcut>
#include <QString>
#include <QStringList>
#include <QWidget>

#include "marketing/ui/campaign_rows.h"
#include "marketing/ui/fill_combo.h"
#include "platform/ui/drawn_icon.h"
#include "platform/ui/letters.h"
#include "queries/filter_notes.h"
#include "queries/left_out.h"
#include "ui_filter_page.h"
#include "wizard/filters_pending.h"

namespace qbx {
namespace {

constexpr int kLongestNumber = 12;

QStringList Texts(const std::vector<ListRow>& rows) {
  QStringList texts;
  for (const ListRow& row : rows)
    texts += row.text;
  return texts;
}

/// Shows text in the normal colour or greyed. Nothing is disabled.
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

FilterPage::FilterPage(PageParts parts)
    : WizardPage(std::move(parts)),
      ui_(std::make_unique<Ui::FilterPage>()),
      firstRows_(App().statements, App().diagnostics, App().userOptions) {
  ui_->setupUi(this);
  SetUpFirstRows();
  const FilterCaptions captions = MakeFilterCaptions(App().startup.edition.boat);
  ui_->fraVehicleFilter->setTitle(captions.fraVehicleFilter);
  for (const FilterRow& row : FilterRows()) {
    FindControls(row);
    controls_[row.index].tick->setText(WithLetter(captions.chkFilter[row.index], row.letter));
    ShowTip(row);
    ConnectFilter(row);
  }
  // Wide enough for any number, so that no control moves when a run shows one.
  for (QLabel* label : {ui_->lblRecords0, ui_->lblRecords1})
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(RecordsFoundText(8'888'888)));
  ui_->cmdApplyFilters->setIcon(DrawnIcon(Drawing::kRefresh));
  ui_->cmdNext1->setToolTip(QStringLiteral("Apply Additional Filters and go to next step"));
  ConnectChecks();
}

FilterPage::~FilterPage() = default;

void FilterPage::SetUpFirstRows() {
  firstRows_.Grid(*ui_->dbgFirst);
  firstRows_.ParentForm(*this);
  firstRows_.bColSorting(false);
  firstRows_.Tag(QStringLiteral("MSG:The first rows stand here when there are any."));
}

QWidget* FilterPage::FirstControl() {
  return ui_->chkIncludeOptedOut;
}

void FilterPage::FindControls(const FilterRow& row) {
  const QString number = QString::number(row.index);
  const QString value = QString::fromLatin1(row.control);
  Controls& controls = controls_[row.index];
  controls.tick = findChild<QCheckBox*>(QLatin1String("chkFilter") + number);
  controls.condition = findChild<QComboBox*>(QLatin1String("cmbFilter") + number);
  controls.between = findChild<QLabel*>(QLatin1String("lblAnd") + number);
  controls.note = findChild<QLabel*>(QLatin1String("lblFilterNote") + number);
  if (row.value == FilterValue::kList) controls.list = findChild<QComboBox*>(value);
  if (row.value == FilterValue::kText) controls.text = findChild<QLineEdit*>(value);
  if (row.value == FilterValue::kNumber)
    controls.numbers = {findChild<QLineEdit*>(value + u'0'), findChild<QLineEdit*>(value + u'1')};
}

void FilterPage::ShowTip(const FilterRow& row) {
  const Controls& controls = controls_[row.index];
  const QString tip = FilterWording(row.tip, App().startup.edition.boat);
  for (QWidget* control : std::initializer_list<QWidget*>{controls.tick, controls.condition, controls.list,
                                                          controls.text, controls.numbers[0], controls.numbers[1]}) {
    if (control != nullptr) control->setToolTip(tip);
  }
}

void FilterPage::ConnectChecks() {
  connect(ui_->chkIncludeOptedOut, &QCheckBox::clicked, this, [this](bool ticked) {
    Desk().selection.IncludeOptedOutClick(ticked);
    ShowState();
  });
  connect(ui_->cmdNext1, &QPushButton::clicked, this, [this] { Next(1); });
  connect(ui_->cmdBack1, &QPushButton::clicked, this, [this] { Back(1); });
  connect(ui_->cmdApplyFilters, &QPushButton::clicked, this, [this] {
    Run([this] { Desk().steps.Refresh(); });
    ShowState();
  });
  connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, ui_->cmdApplyFilters,
          &QPushButton::click);
}

void FilterPage::ConnectFilter(const FilterRow& row) {
  const Controls& controls = controls_[row.index];
  Filters& filters = State().filters;
  connect(controls.tick, &QCheckBox::clicked, this, [this, &row](bool ticked) {
    State().filters.chkFilter[row.index] = ticked;
    FilterClicked();
  });
  if (controls.condition != nullptr) {
    controls.condition->addItems(FilterConditions(row.index));
    connect(controls.condition, &QComboBox::currentIndexChanged, this, [this, &row](int position) {
      if (Showing()) return;
      State().filters.cmbFilter[row.index] = position;
      FilterClicked();
    });
  }
  if (controls.list != nullptr) {
    controls.list->setInsertPolicy(QComboBox::NoInsert);
    connect(controls.list, &QComboBox::editTextChanged, this, [this, &row](const QString& text) {
      if (Showing()) return;
      State().filters.*row.text = text;
      Desk().selection.Changed();
      ShowPending();
    });
  }
  if (controls.text != nullptr) ConnectText(row, controls.text, filters.*row.text);
  for (size_t value = 0; row.numbers != nullptr && value < controls.numbers.size(); ++value) {
    controls.numbers[value]->setMaxLength(kLongestNumber);
    ConnectText(row, controls.numbers[value], (filters.*row.numbers)[value]);
  }
}

// A value that is not stored does not change the campaign.
void FilterPage::ConnectText(const FilterRow& row, QLineEdit* box, QString& value) {
  connect(box, &QLineEdit::textEdited, this, [this, &row, target = &value](const QString& text) {
    *target = text;
    if (row.IsStored()) Desk().selection.Changed();
    ShowPending();
  });
}

void FilterPage::FilterClicked() {
  ShowFilters(Desk().selection.FilterClick());
  ShowPending();
}

void FilterPage::ShowPending() {
  const QString pending = FiltersPendingText(State());
  ui_->lblFiltersPending->setText(pending);
  ui_->dbgFirst->setEnabled(pending.isEmpty());
  ShowNotes();
}

void FilterPage::ShowNotes() {
  for (const FilterRow& row : FilterRows()) {
    QLabel* const note = controls_[row.index].note;
    if (note == nullptr) continue;
    note->setText(FilterNote(State().filters, row.index));
    note->setVisible(!note->text().isEmpty());
  }
}

void FilterPage::CopyState() {
  // A clone, because the desk reads other rows while events run.
  shown_ = Desk().firstRows.Rows().Clone();
  ShowCampaignRows(firstRows_, shown_, App());
  ShowPending();
  const Filters& filters = State().filters;
  ui_->chkIncludeOptedOut->setChecked(filters.chkIncludeOptedOut);
  for (const FilterRow& row : FilterRows())
    ShowFilter(row);
  ui_->lblRecords0->setText(State().lblRecords[0]);
  ui_->lblRecords1->setText(State().lblRecords[1]);
  const QStringList leftOut = LeftOutTexts(State().leftOut, App().startup.edition.boat);
  ui_->lblLeftOut0->setText(leftOut[0]);
  ui_->lblLeftOut1->setText(leftOut[1]);
  ShowFilters(ShowFilterState(filters));
}

void FilterPage::ShowFilter(const FilterRow& row) {
  const Filters& filters = State().filters;
  const Controls& controls = controls_[row.index];
  controls.tick->setChecked(filters.chkFilter[row.index]);
  if (controls.condition != nullptr) controls.condition->setCurrentIndex(filters.cmbFilter[row.index]);
  if (controls.list != nullptr) {
    FillCombo(*controls.list, Texts(State().filterLists[row.index]));
    if (controls.list->currentText() != filters.*row.text) controls.list->setCurrentText(filters.*row.text);
  }
  if (controls.text != nullptr) ShowText(*controls.text, filters.*row.text);
  for (size_t value = 0; row.numbers != nullptr && value < controls.numbers.size(); ++value)
    ShowText(*controls.numbers[value], (filters.*row.numbers)[value]);
}

void FilterPage::ShowFilters(const FilterView& view) {
  for (const FilterRow& row : FilterRows()) {
    const Controls& controls = controls_[row.index];
    const bool offered = row.offered == nullptr || State().filters.*row.offered;
    controls.tick->setVisible(offered);
    if (controls.condition == nullptr) continue;
    controls.condition->setVisible(offered);
    for (QWidget* control :
         std::initializer_list<QWidget*>{controls.condition, controls.list, controls.numbers[0], controls.numbers[1]}) {
      if (control != nullptr) ShowActive(*control, view.active[row.index]);
    }
    if (row.numbers == nullptr) continue;
    controls.numbers[0]->setVisible(offered);
    controls.numbers[1]->setVisible(offered && view.between[row.index]);
    controls.between->setVisible(offered && view.between[row.index]);
  }
}

}  // namespace qbx
