#include "printing/ui/frmReportView.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QList>
#include <QMenu>
#include <QPoint>
#include <QPushButton>
#include <QRectF>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QString>
#include <QStringList>
#include <QWidget>

#include "diagnostics/wait_box.h"
#include "platform/ui/modal.h"
#include "printing/ui/frmSelectPrinter.h"
#include "printing/ui/report_help.h"
#include "reports/page_search.h"
#include "reports/report_error.h"
#include "ui_frmReportView.h"

namespace qbx {

namespace {

constexpr int kViewLocation = 8200;
constexpr int kLayOutSlice = 15;        // milliseconds at a time, so that the window stays alive
constexpr int kRenewInterval = 60'000;  // milliseconds
constexpr int kMisfitsNamed = 5;

/// The percentages of the zoom list, after its first two entries.
constexpr std::array kZooms = {50, 75, 100, 125, 150, 200, 300};
constexpr int kFits = 2;

}  // namespace

frmReportView::frmReportView(const ReportRun& run, const ReportViewParts& parts, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmReportView>()), run_(run), parts_(parts) {
  ui_->setupUi(this);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setWindowTitle(run.caption);
  for (QWidget* widget : std::initializer_list<QWidget*>{ui_->lblMisfits, ui_->lblQueued})
    widget->hide();
  ui_->cmdDetails->setVisible(run.report.OffersDrillDown());
  ui_->cmbZoom->addItem(QStringLiteral("Width"));
  ui_->cmbZoom->addItem(QStringLiteral("Page"));
  for (const int percent : kZooms)
    ui_->cmbZoom->addItem(QStringLiteral("%1 %").arg(percent));
  iRecord_Type = run.recordType;
  sReportFile = run.reportName;
  bLandscape = run.landscape;
  stPrinter = run.printer;
  new HelpWindow(*this, ReportViewHelp);
  Connect();
}

frmReportView::~frmReportView() = default;

void frmReportView::Connect() {
  // An action may throw, but nothing may be thrown through the library's event loop.
  const auto on = [this](auto* sender, auto signal, const std::function<void()>& action) {
    connect(sender, signal, this, [this, action] { Attempt(action); });
  };
  const auto press = [&on](QPushButton* button, const std::function<void()>& action) {
    on(button, &QPushButton::clicked, action);
  };
  press(ui_->cmdPrint, [this] { Print(); });
  press(ui_->cmdExport, [this] { Export(); });
  press(ui_->cmdFirst, [this] { GoTo(1); });
  press(ui_->cmdPrevious, [this] { GoTo(Shown().page - 1); });
  press(ui_->cmdNext, [this] { GoTo(Shown().page + 1); });
  press(ui_->cmdLast, [this] { GoTo(Pages().Count()); });
  press(ui_->cmdFind, [this] { Find(); });
  press(ui_->cmdDetails, [this] { ChooseDetails(); });
  press(ui_->cmdBack, [this] { Back(); });
  press(ui_->cmdClose, [this] { reject(); });
  on(ui_->txtFind, &QLineEdit::returnPressed, [this] { Find(); });
  on(ui_->spnPage, &QSpinBox::valueChanged, [this] { GoTo(ui_->spnPage->value()); });
  connect(&layOut_, &QTimer::timeout, this, [this] { LayOutMore(); });
  connect(&stayInTouch_, &QTimer::timeout, this, [this] { StayInTouch(); });
  ConnectPages();
}

void frmReportView::ConnectPages() {
  connect(ui_->CRViewer, &PageView::Turned, this, [this](int by) { Attempt([this, by] { GoTo(Shown().page + by); }); });
  connect(ui_->CRViewer, &PageView::DrilledDown, this,
          [this](const QStringList& group) { Attempt([this, &group] { OpenView(group); }); });
  connect(ui_->CRViewer, &PageView::Zoomed, this, [this](int steps) { Zoom(steps); });
  connect(ui_->cmbZoom, &QComboBox::currentIndexChanged, this, [this](int index) {
    const auto fit = index == 0 ? PageView::Fit::kWidth : index == 1 ? PageView::Fit::kPage : PageView::Fit::kNone;
    ui_->CRViewer->SetZoom(fit, index < kFits ? 1 : kZooms[static_cast<size_t>(index - kFits)] / 100.0);
  });
}

void frmReportView::Initialise() {
  ui_->CRViewer->SetSheet(SheetOf(run_.report.Paper()));
  OpenView({});
  NoteMisfits();
}

void frmReportView::OpenView(const QStringList& group) {
  const QScopedValueRollback<bool> working(working_, true);
  View view{std::make_unique<ReportPages>(run_.report, run_.report.LayOut(run_.database, group)), group};
  view.pages->LayOutNext();
  views_.push_back(std::move(view));
  ShowView();
}

void frmReportView::ShowView() {
  ui_->cmdBack->setVisible(ShowsDetails());
  ui_->lblDetails->setVisible(ShowsDetails());
  ui_->lblDetails->setText(QStringLiteral("Details of %1").arg(Shown().group.join(QStringLiteral(", "))));
  if (layOutBegan_) layOut_.start();
  GoTo(Shown().page);
}

/// Shows the details of a group on the page, for users without a mouse. When there are several, the user chooses one.
void frmReportView::ChooseDetails() {
  const ReportPage page = Pages().At(Shown().page);
  QMenu menu(this);
  for (const DrillDown& drillDown : page.drillDowns) {
    const QString name = drillDown.group.join(QStringLiteral(", ")).replace(u'&', QStringLiteral("&&"));
    const QList<QAction*> others = menu.actions();
    const auto isThis = [&drillDown](const QAction* other) { return other->data() == drillDown.group; };
    if (std::ranges::none_of(others, isThis)) menu.addAction(name)->setData(drillDown.group);
  }
  const QAction* chosen = menu.exec(ui_->cmdDetails->mapToGlobal(QPoint(0, ui_->cmdDetails->height())));
  if (chosen != nullptr) OpenView(chosen->data().toStringList());
}

void frmReportView::Back() {
  views_.pop_back();
  ShowView();
  ui_->CRViewer->setFocus();
}

TakenOut frmReportView::ShowReport() {
  layOutBegan_ = true;
  layOut_.start();
  stayInTouch_.start(kRenewInterval);
  ui_->CRViewer->setFocus();
  ShowModal(*this);
  layOut_.stop();
  stayInTouch_.stop();
  return taken_;
}

/// Lays out a few more pages. Does nothing while something is printed, because printing lets events run.
void frmReportView::LayOutMore() {
  if (working_) return;
  const QScopedValueRollback<bool> working(working_, true);
  const bool goesOn = Attempt([this] {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < kLayOutSlice && Pages().LayOutNext()) {
    }
    NoteMisfits();
    if (Pages().IsComplete()) GoTo(Shown().page);
  });
  if (!goesOn || Pages().IsComplete()) layOut_.stop();
  ShowCount();
}

/// Calls a function that may throw, and reports a failure here: nothing may be thrown through the library's event loop.
/// \return whether it succeeded
bool frmReportView::Attempt(const std::function<void()>& work) {
  QString problem;
  try {
    work();
    return true;
  } catch (const PlainReportError& error) {
    parts_.diagnostics.ui.ShowMessage({.text = error.text, .icon = MessageIcon::kExclamation});
    return false;
  } catch (const ReportError& error) {
    problem = error.Description();
  } catch (const DatabaseError& error) {
    problem = error.Description();
  } catch (const ReportCancelled&) {
    return false;
  }
  parts_.diagnostics.errors.ShowError(kViewLocation, QStringLiteral("frmReportView"), problem);
  return false;
}

/// Asks whoever follows the report whether it may still be printed, as a sign that the window is still open.
void frmReportView::StayInTouch() {
  if (working_) return;
  const QScopedValueRollback<bool> working(working_, true);
  if (!run_.follower.MayGoOn()) stayInTouch_.stop();
}

/// Reports below the page what does not fit its place, such as an address too long for the window of an envelope.
void frmReportView::NoteMisfits() {
  const qsizetype before = misfits_.size();
  ReportPages& pages = *views_.front().pages;
  while (noted_ < pages.Count())
    misfits_ += TextsThatDoNotFit(pages.At(++noted_));
  if (misfits_.size() == before) return;
  QString names = misfits_.mid(0, kMisfitsNamed).join(QStringLiteral(", "));
  if (misfits_.size() > kMisfitsNamed) names += QStringLiteral(" and %1 more").arg(misfits_.size() - kMisfitsNamed);
  ui_->lblMisfits->setText(QStringLiteral("Does not fit its place: %1").arg(names));
  ui_->lblMisfits->show();
}

void frmReportView::ShowCount() {
  const int page = Shown().page;
  const int count = Pages().Count();
  ui_->spnPage->setMaximum(count);
  ui_->lblPages->setText(Pages().IsComplete() ? QStringLiteral("of %1").arg(count)
                                              : QStringLiteral("of %1 ...").arg(count));
  ui_->cmdFirst->setEnabled(page > 1);
  ui_->cmdPrevious->setEnabled(page > 1);
  ui_->cmdNext->setEnabled(page < count);
  ui_->cmdLast->setEnabled(page < count);
}

void frmReportView::GoTo(int number) {
  const int page = std::clamp(number, 1, Pages().Count());
  Shown().page = page;
  ReportPage shown = Pages().At(page);
  ui_->cmdDetails->setEnabled(!shown.drillDowns.empty());
  ui_->CRViewer->ShowPage(std::move(shown), Pages().Total());
  const QSignalBlocker blocked(ui_->spnPage);
  ShowCount();
  ui_->spnPage->setValue(page);
}

void frmReportView::Zoom(int steps) {
  const int now = qRound(ui_->CRViewer->Scale() * 100);
  int index = 0;
  while (index < static_cast<int>(kZooms.size()) && kZooms[static_cast<size_t>(index)] < now)
    ++index;
  const bool exact = index < static_cast<int>(kZooms.size()) && kZooms[static_cast<size_t>(index)] == now;
  const int wanted = steps > 0 ? index + (exact ? 1 : 0) : index - 1;
  ui_->cmbZoom->setCurrentIndex(std::clamp(wanted, 0, static_cast<int>(kZooms.size()) - 1) + kFits);
}

/// Goes to the next page that holds the text; after the last page it continues with the first. Pages are laid out as
/// needed.
void frmReportView::Find() {
  const QString wanted = ui_->txtFind->text();
  if (wanted.isEmpty()) return ui_->txtFind->setFocus();
  const QScopedValueRollback<bool> working(working_, true);
  std::vector<QRectF> places;
  int number = Shown().page;
  {
    WaitBox box(parts_.diagnostics, QStringLiteral("Searching"));
    do {
      if (++number > Pages().Count() && !Pages().LayOutNext()) number = 1;
      places = PlacesOf(Pages().At(number), Pages().Total(), wanted);
      box.ShowProgress(QStringLiteral("page %1").arg(number));
      if (!box.GoOn()) return ShowCount();
    } while (places.empty() && number != Shown().page);
  }
  if (places.empty()) {
    ShowCount();
    parts_.diagnostics.ui.ShowMessage(
        {.text = QStringLiteral("\"%1\" was not found.").arg(wanted), .icon = MessageIcon::kInformation});
    return;
  }
  GoTo(number);
  ui_->CRViewer->MarkFound(std::move(places));
}

/// Runs longer work with a status box that can cancel it, and records what was printed or saved.
void frmReportView::Guarded(const QString& status,
                            const std::function<TakenOut(const std::function<bool()>& goesOn)>& work) {
  const QScopedValueRollback<bool> working(working_, true);
  if (!run_.follower.MayGoOn()) return;
  parts_.diagnostics.status.ShowStatus(status, true);
  TakenOut taken;
  Attempt([&] {
    taken = work([this] {
      parts_.diagnostics.ui.PumpEvents();
      return !parts_.diagnostics.status.Cancelled();
    });
  });
  if (!ShowsDetails()) {  // details are only a part of the report, so they do not count as printed or saved
    taken_.Add(taken);
    if (taken.Any()) run_.follower.TookOut(taken_);
  }
  parts_.diagnostics.status.Close();
  Attempt([this] {
    NoteMisfits();
    GoTo(Shown().page);
  });
}

/// Details are only a part of the report.
void frmReportView::AboutToGoOut(const TakenOut& taken, const ReportPlace& place) {
  if (!ShowsDetails()) run_.follower.AboutToGoOut(taken, place);
}

/// The number of letters of the report, 0 as long as it is unknown.
int frmReportView::CountLetters() {
  return Pages().IsComplete() ? Pages().At(Pages().Count()).document : 0;
}

void frmReportView::Print() {
  parts_.events.LogMarketingEvent(QStringLiteral("Print Letters"));
  if (ShowsDetails()) return PrintView();
  std::optional<std::vector<Printer>> printers;
  {
    // Cancel in its box must not count as Cancel for the reading of rows.
    const QScopedValueRollback<bool> working(working_, true);
    printers = parts_.printers.List();
  }
  if (!printers) return;
  frmSelectPrinter dialog(parts_.printers, std::move(*printers), stPrinter, run_.report.CountsDocuments(), this);
  dialog.iCopies = iCopies;
  dialog.SetLetters(taken_.documents.empty() ? 0 : *taken_.documents.rbegin(), [this] { return CountLetters(); });
  if (!dialog.ShowSelectPrinter()) return;
  const PrintChoice choice = dialog.Choice();
  stPrinter = choice.printer.deviceId;
  PrintOn(choice);
}

void frmReportView::PrintView() {
  const Message question{.text = QStringLiteral("Print the report currently in view to the default printer?"),
                         .icon = MessageIcon::kQuestion,
                         .buttons = MessageButtons::kYesNo};
  if (parts_.diagnostics.ui.ShowMessage(question) != MessageAnswer::kYes) return;
  if (const std::optional<Printer> printer = DefaultPrinter(parts_.printers, run_.printer))
    PrintOn({.printer = *printer});
}

void frmReportView::PrintOn(const PrintChoice& choice) {
  bool queued = false;
  Guarded(QStringLiteral("Printing the report"), [&](const auto& goesOn) {
    TakenOut taken;
    try {
      taken = PrintPages(run_, Pages(), parts_.printers, choice, goesOn, [&](const TakenOut& printed) {
        AboutToGoOut(printed, {.kind = ReportPlace::Kind::kPrinter, .name = choice.printer.name});
      });
    } catch (const PrintingUnknown&) {
      if (!ShowsDetails()) run_.follower.MayBeOut();
      throw;
    }
    // The printer may also have got a part of a letter, which counts as nothing.
    queued = taken.Any() || !parts_.diagnostics.status.Cancelled();
    return taken;
  });
  if (!queued) return;
  const QString time = parts_.diagnostics.clock.Now().toString(QStringLiteral("HH:mm"));
  ui_->lblQueued->setText(
      QStringLiteral(
          "In the queue of the printer \"%1\" since %2, which does not mean that it is on paper. Look at the printer before you close the report.")
          .arg(choice.printer.name, time));
  ui_->lblQueued->show();
}

void frmReportView::Export() {
  parts_.events.LogMarketingEvent(QStringLiteral("Export Letters"));
  parts_.events.LogEvent(kEventPrint, 0, QStringLiteral("EXPORT"), QStringLiteral("File:%1").arg(sReportFile));
  QFileDialog dialog(this, QStringLiteral("Export Report"));
  dialog.setObjectName(QStringLiteral("dlgExport"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilter(QStringLiteral("PDF file (*.pdf)"));
  dialog.setDefaultSuffix(QStringLiteral("pdf"));
  const QString today = parts_.diagnostics.clock.Today().toString(QStringLiteral("yyyy-MM-dd"));
  dialog.selectFile(QStringLiteral("%1 %2.pdf").arg(run_.caption, today));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
  const QString path = dialog.selectedFiles().constFirst();
  Guarded(QStringLiteral("Saving the report"), [&](const auto& goesOn) {
    return SavePages(run_, Pages(), path, goesOn, [&](const TakenOut& all) { AboutToGoOut(all, {.name = path}); });
  });
}

void frmReportView::keyPressEvent(QKeyEvent* event) {
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  const auto attempt = [this](const std::function<void()>& work) { static_cast<void>(Attempt(work)); };
  if (event->key() == Qt::Key_Escape && ShowsDetails()) return attempt([this] { Back(); });
  if (event->key() == Qt::Key_F3) return attempt([this] { Find(); });
  if (control && event->key() == Qt::Key_Home) return attempt([this] { GoTo(1); });
  if (control && event->key() == Qt::Key_End) return attempt([this] { GoTo(Pages().Count()); });
  if (control && (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Equal)) return Zoom(1);
  if (control && event->key() == Qt::Key_Minus) return Zoom(-1);
  if (control && event->key() == Qt::Key_F) return ui_->txtFind->setFocus();
  QDialog::keyPressEvent(event);
}

}  // namespace qbx
