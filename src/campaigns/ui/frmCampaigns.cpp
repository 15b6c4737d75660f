#include "campaigns/ui/frmCampaigns.h"

#include <QEvent>
#include <QKeyEvent>
#include <QList>
#include <QObject>
#include <QPushButton>
#include <QString>
#include <QTabWidget>
#include <QTreeWidget>
#include <QTreeWidgetItem>
#include <QWidget>

#include "campaigns/campaign_list.h"
#include "campaigns/store_campaign.h"
#include "campaigns/ui/list_widget.h"
#include "platform/ui/long_text.h"
#include "platform/ui/modal.h"
#include "ui_frmCampaigns.h"

namespace qbx {
namespace {

enum Tab { kSaveTab, kCampaignsTab, kHistoryTab };

constexpr int kDoubleClickPause = 100;  // lets the user see that the row was chosen

QString ListName(const char* list) {
  return QString::fromLatin1(list);
}

}  // namespace

frmCampaigns::frmCampaigns(const CampaignManagerParts& parts, QWidget* parent)
    : QDialog(parent), parts_(parts), ui_(std::make_unique<Ui::frmCampaigns>()) {
  ui_->setupUi(this);
  const QString date = QStringLiteral("88/88/8888 88:88");
  const QString name = QStringLiteral("A campaign name of usual length");
  PrepareList(*ui_->lstCampaigns);
  PrepareList(*ui_->lstHistory);
  SetColumnWidths(*ui_->lstCampaigns, {QStringLiteral("88888"), name, date, date, name, QStringLiteral("Created By")});
  SetColumnWidths(*ui_->lstHistory, {QStringLiteral("888888"), date, name,
                                     QStringLiteral("Name or description changed"), QStringLiteral("Username")});
  Connect();
  SetLoading();
}

frmCampaigns::~frmCampaigns() = default;

void frmCampaigns::Connect() {
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->cmdLoad, &QPushButton::clicked, this, &frmCampaigns::Load);
  connect(ui_->cmdEdit, &QPushButton::clicked, this, &frmCampaigns::Edit);
  connect(ui_->cmdSave, &QPushButton::clicked, this, &frmCampaigns::Save);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &frmCampaigns::Cancel);
  connect(ui_->cmdCopy, &QPushButton::clicked, this, &frmCampaigns::Copy);
  connect(ui_->cmdDelete, &QPushButton::clicked, this, &frmCampaigns::Delete);
  connect(ui_->cmdViewAllEvents, &QPushButton::clicked, this, [this] {
    viewAll_ = true;
    LoadCampaignHistory(true);
  });
  connect(ui_->lstCampaigns, &QTreeWidget::itemSelectionChanged, this, [this] {
    const QList<QTreeWidgetItem*> rows = ui_->lstCampaigns->selectedItems();
    SelectCampaign(rows.isEmpty() ? nullptr : rows.front());
  });
  connect(ui_->lstCampaigns, &QTreeWidget::itemDoubleClicked, this, &frmCampaigns::LoadByDoubleClick);
  connect(ui_->ssTabCampaigns, &QTabWidget::currentChanged, this, [this](int tab) {
    if (isVisible() && tab == kHistoryTab && !historyRead_) LoadCampaignHistory(viewAll_);
  });
  ui_->lstCampaigns->installEventFilter(this);
}

void frmCampaigns::SetSaving() {
  saving_ = true;
}

void frmCampaigns::SetLoading() {
  saving_ = false;
}

void frmCampaigns::ShowForm() {
  lLoadedCampaignID = 0;
  stored = false;
  editing_ = false;
  if (!saving_ && lCampaignId < 0) lCampaignId = 0;  // a campaign that was never saved is not in the list
  PrepareMode();
  // The history is read when its tab is selected, so that a failing database is reported only once.
  historyRead_ = false;
  if (LoadCampaigns()) LoadCampaignHistory(viewAll_);
  ShowNames(parts_.campaign.record.Campaign_Name, parts_.campaign.record.Campaign_Description);
  parts_.layout.RestoreWindow(*this, objectName());
  parts_.layout.RestoreColumns(*ui_->lstCampaigns->header(), ListName("lstCampaigns"));
  parts_.layout.RestoreColumns(*ui_->lstHistory->header(), ListName("lstHistory"));
  (saving_ ? static_cast<QWidget*>(ui_->txtName) : ui_->lstCampaigns)->setFocus();
  ShowModal(*this);
}

void frmCampaigns::PrepareMode() {
  ui_->ssTabCampaigns->setTabEnabled(kSaveTab, saving_);
  ui_->ssTabCampaigns->setCurrentIndex(saving_ ? kSaveTab : kCampaignsTab);
  EnableButtons();
}

// Disabled during an edit: the buttons could delete the edited campaign or drop what was typed.
void frmCampaigns::EnableButtons() {
  for (QPushButton* button : {ui_->cmdLoad, ui_->cmdEdit, ui_->cmdCopy})
    button->setEnabled(!saving_ && !editing_);
  ui_->cmdDelete->setEnabled(!editing_);
}

void frmCampaigns::setVisible(bool visible) {
  QDialog::setVisible(visible);
  if (visible) ui_->txtName->end(false);  // an opening dialog selects the text of its first box
}

void frmCampaigns::reject() {
  if (MayLoseEdit()) QDialog::reject();
}

bool frmCampaigns::MayLoseEdit() {
  const bool typed = ui_->txtName->text() != givenName_ || ui_->txtDescription->document()->isModified();
  if (!editing_ || !typed || parts_.diagnostics.ui.QuitRequested()) return true;
  const Message question{
      .text =
          QStringLiteral("The Name or Description has been changed and not been saved.\r\rClose and lose the changes?"),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo,
      .defaultAnswer = MessageAnswer::kNo};
  if (parts_.diagnostics.ui.ShowMessage(question) == MessageAnswer::kYes) return true;
  ui_->ssTabCampaigns->setCurrentIndex(kSaveTab);
  return false;
}

void frmCampaigns::done(int result) {
  parts_.layout.SaveWindow(*this, objectName());
  parts_.layout.SaveColumns(*ui_->lstCampaigns->header(), ListName("lstCampaigns"));
  parts_.layout.SaveColumns(*ui_->lstHistory->header(), ListName("lstHistory"));
  QDialog::done(result);
}

void frmCampaigns::keyPressEvent(QKeyEvent* event) {
  // During an edit Esc ends the edit; the next Esc closes the window.
  if (event->key() == Qt::Key_Escape && editing_) {
    Cancel();
    return;
  }
  QDialog::keyPressEvent(event);
}

bool frmCampaigns::eventFilter(QObject* watched, QEvent* event) {
  if (watched != ui_->lstCampaigns || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      ui_->cmdLoad->click();
      return true;
    case Qt::Key_F2:
      ui_->cmdEdit->click();
      return true;
    case Qt::Key_Delete:
      ui_->cmdDelete->click();
      return true;
    default:
      return QDialog::eventFilter(watched, event);
  }
}

void frmCampaigns::ShowNames(const QString& name, const QString& description) {
  ui_->txtName->setText(name);
  ui_->txtName->end(false);
  givenName_ = ui_->txtName->text();
  givenDescription_ = description;
  SetLongText(*ui_->txtDescription, description);
  ui_->txtDescription->document()->setModified(false);
}

QString frmCampaigns::TypedDescription() const {
  return ui_->txtDescription->document()->isModified() ? ExactText(*ui_->txtDescription, givenDescription_)
                                                       : givenDescription_;
}

void frmCampaigns::Load() {
  if (LoadSelected()) accept();
}

void frmCampaigns::LoadByDoubleClick() {
  if (!ui_->cmdLoad->isEnabled() || lCampaignId < 0 || !LoadSelected()) return;
  parts_.diagnostics.ui.Pause(kDoubleClickPause);
  parts_.diagnostics.ui.PumpEvents();
  accept();
}

bool frmCampaigns::LoadSelected() {
  if (lCampaignId == 0) return false;
  if (parts_.storage.LoadCampaign(lCampaignId)) {
    lLoadedCampaignID = lCampaignId;
    return true;
  }
  // The window stays open, so that another campaign can be chosen. The wizard keeps its contents.
  if (CampaignIsGone(parts_.statements, lCampaignId)) RefreshLists(true);
  return false;
}

void frmCampaigns::Edit() {
  if (lCampaignId == 0) {
    Tell(QStringLiteral("No Campaign selected to Edit!"));
    return;
  }
  ShowNames(selectedName_, selectedDescription_);
  if (unsaved_.campaignId == lCampaignId) {
    ui_->txtName->setText(unsaved_.name);
    SetLongText(*ui_->txtDescription, unsaved_.description);
    ui_->txtDescription->document()->setModified(true);
  }
  editing_ = true;
  editedId_ = lCampaignId;
  EnableButtons();
  ui_->ssTabCampaigns->setTabEnabled(kSaveTab, true);
  ui_->ssTabCampaigns->setCurrentIndex(kSaveTab);
  ui_->txtName->setFocus();
}

void frmCampaigns::Save() {
  if (!CampaignNameIsValid(ui_->txtName->text())) {
    Tell(QStringLiteral("Campaign Name is not valid."));
    ui_->txtName->setFocus();
    return;
  }
  if (editing_) {
    if (NameMayBeUsed(ui_->txtName->text(), editedId_)) SaveEdit();
    return;
  }
  if (!NameMayBeUsed(ui_->txtName->text(), parts_.campaign.record.ID)) return;
  stored = StoreCampaign(parts_.statements, parts_.storage, parts_.campaign, parts_.diagnostics.ui,
                         ui_->txtName->text(), TypedDescription());
  lCampaignId = parts_.campaign.record.ID;
  accept();
}

bool frmCampaigns::NameMayBeUsed(const QString& name, int own) {
  if (NameTakenBy(campaigns_, name, own).empty()) return true;
  const Message question{
      .text =
          QStringLiteral("There is another campaign named '%1'.\r\rUse the name a second time?").arg(name.trimmed()),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo,
      .defaultAnswer = MessageAnswer::kNo};
  if (parts_.diagnostics.ui.ShowMessage(question) == MessageAnswer::kYes) return true;
  ui_->txtName->setFocus();
  return false;
}

void frmCampaigns::SaveEdit() {
  const Details typed{.campaignId = editedId_, .name = ui_->txtName->text(), .description = TypedDescription()};
  const bool changed = parts_.storage.UpdateCampaignDetails(typed.campaignId, typed.name, typed.description);
  unsaved_ = changed ? Details() : typed;
  ShowNames({}, {});
  LeaveEditing();
  if (changed || CampaignIsGone(parts_.statements, typed.campaignId)) RefreshLists(true);
}

void frmCampaigns::Cancel() {
  if (editing_) LeaveEditing();
  if (saving_) reject();
}

void frmCampaigns::LeaveEditing() {
  editing_ = false;
  EnableButtons();
  ui_->ssTabCampaigns->setCurrentIndex(kCampaignsTab);
  ui_->ssTabCampaigns->setTabEnabled(kSaveTab, false);
  ui_->lstCampaigns->setFocus();
}

void frmCampaigns::Copy() {
  if (lCampaignId == 0) {
    Tell(QStringLiteral("No Campaign selected to copy!"));
    return;
  }
  const QString typed = parts_.diagnostics.ui.InputBox(
      {.prompt = QStringLiteral("Enter name for the new campaign:"), .title = QStringLiteral("Copy Campaign")});
  const QString name = CampaignCopyName(typed);
  if (name.isEmpty() || !NameMayBeUsed(name, 0)) return;
  const bool copied = parts_.storage.CopyCampaign(lCampaignId, name) != 0;
  if (copied || CampaignIsGone(parts_.statements, lCampaignId)) RefreshLists(false);
}

void frmCampaigns::Delete() {
  const Message question{
      .text = QLatin1String("OK to delete the selected Campaign '") + selectedName_ + QLatin1String("'?"),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo,
      .defaultAnswer = MessageAnswer::kNo};
  if (ui_->lstCampaigns->selectedItems().isEmpty()) {
    Tell(QStringLiteral("No Campaign selected to delete!"));
    return;
  }
  if (parts_.diagnostics.ui.ShowMessage(question) != MessageAnswer::kYes) return;
  const bool deleted = parts_.storage.DeleteCampaign(lCampaignId);
  if (deleted) {
    // The next row is selected, so that the keyboard keeps its place.
    const QTreeWidgetItem* row = ui_->lstCampaigns->selectedItems().front();
    const QTreeWidgetItem* next = ui_->lstCampaigns->itemBelow(row);
    if (next == nullptr) next = ui_->lstCampaigns->itemAbove(row);
    SelectCampaign(next);
  }
  if (deleted || CampaignIsGone(parts_.statements, lCampaignId)) RefreshLists(true);
}

void frmCampaigns::Tell(const QString& text) {
  parts_.diagnostics.ui.ShowMessage(
      {.text = text, .icon = MessageIcon::kExclamation, .defaultAnswer = MessageAnswer::kOk});
}

}  // namespace qbx
