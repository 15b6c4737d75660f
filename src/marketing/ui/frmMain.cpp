#include "marketing/ui/frmMain.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QSize>
#include <QStatusBar>
#include <QString>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWidget>

#include "campaigns/ui/frmCampaigns.h"
#include "dispatch/mailshot_checks.h"
#include "dispatch/results_log_file.h"
#include "marketing/ui/command_guard.h"
#include "marketing/ui/filter_page.h"
#include "marketing/ui/help_menu.h"
#include "marketing/ui/page_help.h"
#include "marketing/ui/process_page.h"
#include "marketing/ui/query_page.h"
#include "marketing/ui/results_page.h"
#include "marketing/ui/templates_page.h"
#include "platform/ui/drawn_icon.h"
#include "ui_frmMain.h"

namespace qbx {
namespace {

constexpr char kFormName[] = "frmMain";

/// Where the database is.
QString PlaceOfDatabase(const Application& app) {
  const QString& server = app.hostConnection.Server();
  return IsEmbeddedServer(server) ? QStringLiteral("The database is in the folder %1").arg(app.startup.ProgramFolder)
                                  : QStringLiteral("Database Server: %1").arg(server);
}

}  // namespace

frmMain::frmMain(Application& app, CampaignDesk& desk, WidgetUi& ui, WindowLayout& layout)
    : app_(app),
      desk_(desk),
      boxes_(ui),
      layout_(layout),
      outlet_(app.printers, app.events, app.diagnostics, layout, this),
      reports_(desk.MakeReportPrinter(outlet_)),
      ui_(std::make_unique<Ui::frmMain>()) {
  ui_->setupUi(this);
  setWindowIcon(DrawnIcon(Drawing::kLogo));
  ui_->imgLogo->setPixmap(DrawnIcon(Drawing::kLogo).pixmap(QSize(72, 72), devicePixelRatio()));
  ui_->cmdNew->setIcon(DrawnIcon(Drawing::kNew));
  ui_->cmdLoad->setIcon(DrawnIcon(Drawing::kOpen));
  ui_->cmdSave->setIcon(DrawnIcon(Drawing::kSave));
  ui_->cmdRun->setIcon(DrawnIcon(Drawing::kRun));
  help_ = new HelpWindow(*this, [this] {
    const bool wizard = ui_->stack->currentWidget() == ui_->ssTabMain;
    return PageHelp(wizard ? ui_->ssTabMain->currentIndex() + 1 : 0, app_.startup.edition.boat);
  });
  BuildTabs();
  BuildMenu();
  ConnectButtons();
  ShowConnection();
  ShowCaption();
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->ssTabMain, ui_->cmdSave, ui_->cmdRun})
    control->setEnabled(false);
  ui_->stack->setCurrentWidget(ui_->fraStart);
  ui_->cmdNew->setFocus();
  resize(1120, 740);
  layout_.RestoreWindow(*this, QString::fromLatin1(kFormName));
}

// The pages refer to the desk, which outlives this window, so they are destroyed first.
frmMain::~frmMain() {
  for (WizardPage* page : pages_)
    delete page;
}

void frmMain::BuildTabs() {
  for (int tab = 1; tab <= kTabCount; ++tab) {
    auto* holder = new QWidget;
    auto* room = new QVBoxLayout(holder);
    room->setContentsMargins(0, 0, 0, 0);
    ui_->ssTabMain->setTabToolTip(ui_->ssTabMain->addTab(holder, TabCaption(tab)), TabCaption(tab));
  }
  connect(ui_->ssTabMain, &QTabWidget::currentChanged, this, &frmMain::TabOpened);
}

QAction* frmMain::AddEntry(QMenu& menu, const char* name, const QString& text, const std::function<void()>& command) {
  QAction* entry = menu.addAction(text);
  entry->setObjectName(QString::fromLatin1(name));
  connect(entry, &QAction::triggered, this, command);
  return entry;
}

void frmMain::BuildMenu() {
  QMenu& file = *menuBar()->addMenu(QStringLiteral("&File"));
  file.setObjectName(QStringLiteral("mnuFile"));
  AddEntry(file, "mnuStart", QStringLiteral("Start a new Report or Campaign..."), [this] {
    if (desk_.steps.ConfirmNewCampaign()) StartNewCampaign();
  })->setShortcut(QKeySequence::New);
  AddEntry(file, "mnuLoad", QStringLiteral("Load an existing Report or Campaign..."), [this] {
    if (desk_.steps.ConfirmLoadCampaign()) LoadCampaign();
  })->setShortcut(QKeySequence::Open);
  mnuSave_ = AddEntry(file, "mnuSave", QStringLiteral("Save the current Report / Campaign Settings..."),
                      [this] { SaveCampaign(); });
  mnuSave_->setShortcut(QKeySequence::Save);
  mnuSave_->setEnabled(false);
  file.addSeparator();
  AddEntry(file, "mnuExit", QStringLiteral("&Exit"), [this] {
    close();
  })->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
  AddHelpMenu(*this, help_->Command(), app_, layout_);
}

void frmMain::ConnectButtons() {
  connect(ui_->cmdNew, &QPushButton::clicked, this, &frmMain::StartNewCampaign);
  connect(ui_->cmdLoad, &QPushButton::clicked, this, &frmMain::LoadCampaign);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmMain::Exit);
  connect(ui_->cmdSave, &QPushButton::clicked, this, &frmMain::SaveCampaign);
  connect(ui_->cmdRun, &QPushButton::clicked, this, &frmMain::RunCampaign);
  // Return presses the button that has the focus.
  for (QPushButton* button : {ui_->cmdNew, ui_->cmdLoad, ui_->cmdClose, ui_->cmdSave, ui_->cmdRun})
    button->setAutoDefault(true);
  // Some controls take Ctrl+Tab themselves.
  for (const auto& [key, step] : {std::pair(Qt::Key_PageDown, 1), std::pair(Qt::Key_PageUp, -1)}) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), ui_->ssTabMain);
    shortcut->setContext(Qt::WindowShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, step = step] {
      const int index = ui_->ssTabMain->currentIndex() + step;
      if (ui_->ssTabMain->isEnabled() && index >= 0 && index < kTabCount) ui_->ssTabMain->setCurrentIndex(index);
    });
  }
}

void frmMain::ShowConnection() {
  const bool connected = app_.hostConnection.Ready();
  auto* line = new QLabel(this);
  line->setObjectName(QStringLiteral("lblConnection"));
  line->setTextFormat(Qt::PlainText);
  line->setText(
      connected ? QStringLiteral("User: %1    Database: %2").arg(app_.startup.user, app_.hostConnection.DatabaseName())
                : QStringLiteral("User: %1    Not connected to the database").arg(app_.startup.user));
  line->setToolTip(PlaceOfDatabase(app_));
  statusBar()->addWidget(line);
  statusBar()->addPermanentWidget(new QLabel(QStringLiteral("F1: what this page does"), this));
  if (!connected) {
    ui_->lblNoConnection->setText(QStringLiteral(
        "There is no connection to the database. Campaigns cannot be loaded, saved or run until there is one. Start the program again when the database can be reached."));
  }
}

void frmMain::Guarded(const std::function<void()>& command) {
  for (WizardPage* page : pages_) {
    if (page != nullptr) page->KeepEdits();
  }
  const CommandGuard guard(*this);
  command();
}

void frmMain::WithDatabase(const std::function<void()>& command) {
  if (app_.connection.WasOpen()) return Guarded(command);
  boxes_.ShowMessage(NoDatabaseMessage());
}

void frmMain::StartNewCampaign() {
  const Statements::Telling once(app_.statements, Statements::Tells::kLossOnce);
  const DraftKeeper::Hold hold(desk_.drafts);
  Guarded([this] { desk_.steps.StartNewCampaign(); });
  desk_.drafts.Saved();
  ShowCampaign();
}

void frmMain::LoadCampaign() {
  bool loaded = false;
  std::optional<DraftKeeper::Hold> hold;
  WithDatabase([this, &loaded, &hold] {
    loaded = desk_.settings.LoadCampaignSettings([this, &hold] {
      frmCampaigns manager(ManagerParts(), this);
      const HelpWindow help(manager, ManagerHelp);
      manager.lCampaignId = app_.campaign.record.ID;
      manager.SetLoading();
      manager.ShowForm();
      hold.emplace(desk_.drafts);
      return manager.lLoadedCampaignID;
    });
  });
  if (!loaded) return;
  desk_.drafts.Saved();
  ShowCampaign();
}

void frmMain::OfferDraft() {
  if (!app_.hostConnection.Ready()) return;
  std::optional<TextKind> taken;
  Guarded([this, &taken] { taken = desk_.MakeDraftOffer().Offer(); });
  if (!taken) return;
  ShowCampaign();
  SelectTab(kTemplatesTab);
  static_cast<TemplatesPage&>(Page(kTemplatesTab - 1)).ShowText(*taken);
}

void frmMain::SaveCampaign() {
  bool stored = false;
  const int before = app_.campaign.record.ID;
  WithDatabase([this, &stored] {
    desk_.settings.SaveCampaignSettings([this, &stored] {
      frmCampaigns manager(ManagerParts(), this);
      const HelpWindow help(manager, ManagerHelp);
      manager.lCampaignId = app_.campaign.record.ID;
      manager.SetSaving();
      manager.ShowForm();
      stored = manager.stored;
    });
  });
  ShowPages();
  if (!stored) return;
  desk_.drafts.Saved();
  ShowCaption();
  const int now = app_.campaign.record.ID;
  if (now != before) ResultsLogFile(app_.log.Path(), before).MoveTo(ResultsLogFile(app_.log.Path(), now));
}

CampaignManagerParts frmMain::ManagerParts() {
  return {app_.statements, app_.campaignStorage, app_.campaign, layout_, app_.diagnostics};
}

void frmMain::RunCampaign() {
  const Statements::Telling once(app_.statements, Statements::Tells::kLossOnce);
  StepResult result;
  WithDatabase([this, &result] { result = desk_.steps.RunCampaign(); });
  ShowPages();  // the options were read again
  Go(result);
  boxes_.PumpEvents();
}

void frmMain::Next(int index) {
  const Statements::Telling once(app_.statements, Statements::Tells::kLossOnce);
  StepResult result;
  const auto step = [this, index, &result] { result = desk_.steps.NextStep(index); };
  WizardSteps::RunsQuery(index) ? WithDatabase(step) : Guarded(step);
  Page(index).ShowState();
  Go(result);
}

void frmMain::Back(int index) {
  const Statements::Telling once(app_.statements, Statements::Tells::kLossOnce);
  StepResult result;
  Guarded([this, index, &result] { result = desk_.steps.BackStep(index); });
  Go(result);
}

void frmMain::Go(const StepResult& result) {
  if (!result.Moved()) return;
  SelectTab(result.selectTab);
  if (result.notice) boxes_.ShowMessage(*result.notice);
}

void frmMain::SelectTab(int tab) {
  const int index = tab - 1;
  ui_->ssTabMain->currentIndex() == index ? TabOpened(index) : ui_->ssTabMain->setCurrentIndex(index);
}

void frmMain::TabOpened(int index) {
  if (!ui_->ssTabMain->isEnabled() || index < 0) return;
  WizardPage& page = Page(index);
  {
    const Statements::Telling once(app_.statements, Statements::Tells::kLossOnce);
    Guarded([this, index] { desk_.steps.TabOpened(index + 1); });
    page.ShowState();
  }
  help_->ShowText();
  if (!ui_->ssTabMain->tabBar()->hasFocus()) page.FirstControl()->setFocus();
  if (index + 1 != kProcessTab) return;
  if (const std::optional<Message> notice = HostMailServerNotice(app_.options, app_.service))
    boxes_.ShowMessage(*notice);
}

void frmMain::ShowRow(qint64 recordId) {
  SelectTab(kResultsTab);
  static_cast<ResultsPage&>(Page(kResultsTab - 1)).GoToRow(recordId);
}

WizardPage& frmMain::Page(int index) {
  WizardPage*& page = pages_[static_cast<size_t>(index)];
  if (page != nullptr) return *page;
  const PageParts parts{.app = app_,
                        .desk = desk_,
                        .reports = reports_,
                        .next = [this](int step) { Next(step); },
                        .back = [this](int step) { Back(step); },
                        .showRow = [this](qint64 recordId) { ShowRow(recordId); },
                        .guarded = [this](const std::function<void()>& command) { Guarded(command); },
                        .run = [this](const std::function<void()>& command) { WithDatabase(command); }};
  switch (index + 1) {
    case kQueryTab:
      page = new QueryPage(parts);
      break;
    case kFilterTab:
      page = new FilterPage(parts);
      break;
    case kResultsTab:
      page = new ResultsPage(parts);
      break;
    case kTemplatesTab:
      page = new TemplatesPage(parts);
      break;
    default:
      page = new ProcessPage(parts);
      break;
  }
  ui_->ssTabMain->widget(index)->layout()->addWidget(page);
  // The page comes last in the tab order, but these controls are below it.
  QWidget* last = previousInFocusChain();
  while ((last->focusPolicy() & Qt::TabFocus) == 0)
    last = last->previousInFocusChain();
  setTabOrder(last, ui_->cmdSave);
  setTabOrder(ui_->cmdSave, ui_->cmdRun);
  return *page;
}

void frmMain::ShowWizard() {
  ui_->stack->setCurrentWidget(ui_->ssTabMain);
  for (QWidget* control : std::initializer_list<QWidget*>{ui_->ssTabMain, ui_->cmdSave, ui_->cmdRun})
    control->setEnabled(true);
  mnuSave_->setEnabled(true);
}

void frmMain::ShowCampaign() {
  desk_.resultsLog.Clear();
  ShowWizard();
  for (WizardPage* page : pages_) {
    if (page != nullptr) page->CampaignSetUp();
  }
  ShowPages();
  SelectTab(kQueryTab);
  ShowCaption();
}

void frmMain::ShowPages() {
  for (WizardPage* page : pages_) {
    if (page != nullptr) page->ShowState();
  }
}

void frmMain::ShowCaption() {
  setWindowTitle(WindowCaption(boxes_.ApplicationTitle(), app_.campaign.record));
}

void frmMain::Exit() {
  if (desk_.steps.ConfirmExit()) close();
}

void frmMain::closeEvent(QCloseEvent* event) {
  if (boxes_.QuitRequested())
    desk_.settings.Quit();
  else if (!desk_.settings.CloseRequest())
    return event->ignore();
  layout_.SaveWindow(*this, QString::fromLatin1(kFormName));
  for (WizardPage* page : pages_) {
    if (page != nullptr) page->WindowCloses();
  }
  app_.connection.Close();
  event->accept();
}

}  // namespace qbx
