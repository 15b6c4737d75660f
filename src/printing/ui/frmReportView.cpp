#include "printing/ui/frmReportView.h"

#include <QtWidgets>

#include "platform/ui/modal.h"
#include "printing/ui/frmSelectPrinter.h"
#include "printing/ui/report_help.h"
#include "reports/page_search.h"
#include "reports/report_error.h"
#include "ui_frmReportView.h"

namespace qbx {

namespace {

constexpr int kViewLocation = 8200;
constexpr int kLayOutSlice = 15;  // milliseconds at a time, so that the window stays alive
constexpr int kTouch = 60'000;    // milliseconds
constexpr int kMisfitsNamed = 5;

/// Percentages of the zoom list, behind its two first entries.
constexpr std::array kZooms = {50, 75, 100, 125, 150, 200, 300};
constexpr int kFits = 2;

}  // namespace

frmReportView::frmReportView(const ReportRun& run, const ReportViewParts& parts, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmReportView>()), run_(run), parts_(parts) {
  ui_->setupUi(this);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setWindowTitle(run.caption);
  ui_->lblMisfits->hide();
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
  // What a click does may fail, and nothing may be thrown through the library's event loop.
  const auto on = [this](auto* sender, auto signal, const std::function<void()>& action) {
    connect(sender, signal, this, [this, action] { Attempt(action); });
  };
  const auto press = [&on](QPushButton* button, const std::function<void()>& action) {
    on(button, &QPushButton::clicked, action);
  };
  press(ui_->cmdPrint, [this] { Print(); });
  press(ui_->cmdExport, [this] { Export(); });
  press(ui_->cmdFirst, [this] { GoTo(1); });
  press(ui_->cmdPrevious, [this] { GoTo(page_ - 1); });
  press(ui_->cmdNext, [this] { GoTo(page_ + 1); });
  press(ui_->cmdLast, [this] { GoTo(pages_->Count()); });
  press(ui_->cmdFind, [this] { Find(); });
  press(ui_->cmdClose, [this] { reject(); });
  on(ui_->txtFind, &QLineEdit::returnPressed, [this] { Find(); });
  on(ui_->spnPage, &QSpinBox::valueChanged, [this] { GoTo(ui_->spnPage->value()); });
  connect(ui_->CRViewer, &PageView::Turned, this, [this](int by) { Attempt([this, by] { GoTo(page_ + by); }); });
  connect(ui_->CRViewer, &PageView::Zoomed, this, [this](int steps) { Zoom(steps); });
  connect(ui_->cmbZoom, &QComboBox::currentIndexChanged, this, [this](int index) {
    const auto fit = index == 0 ? PageView::Fit::kWidth : index == 1 ? PageView::Fit::kPage : PageView::Fit::kNone;
    ui_->CRViewer->SetZoom(fit, index < kFits ? 1 : kZooms[static_cast<size_t>(index - kFits)] / 100.0);
  });
  connect(&layOut_, &QTimer::timeout, this, [this] { LayOutMore(); });
  connect(&stayInTouch_, &QTimer::timeout, this, [this] { StayInTouch(); });
}

void frmReportView::Initialise() {
  pages_ = std::make_unique<ReportPages>(run_.report, run_.report.LayOut(run_.database));
  pages_->LayOutNext();
  NoteMisfits();
  ui_->CRViewer->SetSheet(SheetOf(run_.report.Paper()));
  GoTo(1);
}

TakenOut frmReportView::ShowReport() {
  layOut_.start();
  stayInTouch_.start(kTouch);
  ui_->CRViewer->setFocus();
  ShowModal(*this);
  layOut_.stop();
  stayInTouch_.stop();
  return taken_;
}

/// Lays out a few more pages. The timer rests while something is printed, which lets events run.
void frmReportView::LayOutMore() {
  if (working_) return;
  const QScopedValueRollback<bool> working(working_, true);
  const bool goesOn = Attempt([this] {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < kLayOutSlice && pages_->LayOutNext()) {
    }
    NoteMisfits();
    if (pages_->IsComplete()) GoTo(page_);
  });
  if (!goesOn || pages_->IsComplete()) layOut_.stop();
  ShowCount();
}

/// Does what may fail. A failure is told here, since nothing may be thrown through the library's event loop.
/// \return whether it was done
bool frmReportView::Attempt(const std::function<void()>& work) {
  QString problem;
  try {
    work();
    return true;
  } catch (const NoPagesError& error) {
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

/// Lets whoever follows the report know that its window is still open.
void frmReportView::StayInTouch() {
  if (working_) return;
  const QScopedValueRollback<bool> working(working_, true);
  if (!run_.follower.MayGoOn()) stayInTouch_.stop();
}

/// Says below the page what does not fit its place, such as an address that is too long for the window of an envelope.
void frmReportView::NoteMisfits() {
  const qsizetype before = misfits_.size();
  while (noted_ < pages_->Count())
    misfits_ += TextsThatDoNotFit(pages_->At(++noted_));
  if (misfits_.size() == before) return;
  QString names = misfits_.mid(0, kMisfitsNamed).join(QStringLiteral(", "));
  if (misfits_.size() > kMisfitsNamed) names += QStringLiteral(" and %1 more").arg(misfits_.size() - kMisfitsNamed);
  ui_->lblMisfits->setText(QStringLiteral("Does not fit its place: %1").arg(names));
  ui_->lblMisfits->show();
}

void frmReportView::ShowCount() {
  ui_->spnPage->setMaximum(pages_->Count());
  ui_->lblPages->setText(pages_->IsComplete() ? QStringLiteral("of %1").arg(pages_->Count())
                                              : QStringLiteral("of %1 ...").arg(pages_->Count()));
  ui_->cmdFirst->setEnabled(page_ > 1);
  ui_->cmdPrevious->setEnabled(page_ > 1);
  ui_->cmdNext->setEnabled(page_ < pages_->Count());
  ui_->cmdLast->setEnabled(page_ < pages_->Count());
}

void frmReportView::GoTo(int number) {
  page_ = std::clamp(number, 1, pages_->Count());
  ui_->CRViewer->ShowPage(pages_->At(page_), pages_->Total());
  const QSignalBlocker blocked(ui_->spnPage);
  ShowCount();
  ui_->spnPage->setValue(page_);
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

/// Goes to the next page that holds the text, from the beginning again behind the last one.
void frmReportView::Find() {
  const QString wanted = ui_->txtFind->text();
  if (wanted.isEmpty()) return ui_->txtFind->setFocus();
  for (int step = 1; step <= pages_->Count(); ++step) {
    const int number = (page_ - 1 + step) % pages_->Count() + 1;
    std::vector<QRectF> places = PlacesOf(pages_->At(number), pages_->Total(), wanted);
    if (places.empty()) continue;
    GoTo(number);
    ui_->CRViewer->MarkFound(std::move(places));
    return;
  }
  parts_.diagnostics.ui.ShowMessage(
      {.text = QStringLiteral("\"%1\" was not found.").arg(wanted), .icon = MessageIcon::kInformation});
}

/// Runs what takes a while, with a status box that can cancel it, and keeps what it took out.
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
  taken_.Add(taken);
  if (taken.Any()) run_.follower.TookOut(taken_);
  parts_.diagnostics.status.Close();
  Attempt([this] {
    NoteMisfits();
    GoTo(page_);
  });
}

void frmReportView::Print() {
  parts_.events.LogMarketingEvent(QStringLiteral("Print Letters"));
  frmSelectPrinter dialog(parts_.printers, stPrinter, run_.report.CountsDocuments(), this);
  dialog.iCopies = iCopies;
  dialog.SetLastLetter(taken_.documents.empty() ? 0 : *taken_.documents.rbegin());
  if (!dialog.ShowSelectPrinter()) return;
  const PrintChoice choice = dialog.Choice();
  stPrinter = choice.printer.deviceId;
  Guarded(QStringLiteral("Printing the report"),
          [&](const auto& goesOn) { return PrintPages(run_, *pages_, parts_.printers, choice, goesOn); });
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
  Guarded(QStringLiteral("Saving the report"),
          [&](const auto& goesOn) { return SavePages(run_, *pages_, dialog.selectedFiles().constFirst(), goesOn); });
}

void frmReportView::keyPressEvent(QKeyEvent* event) {
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  const auto attempt = [this](const std::function<void()>& work) { static_cast<void>(Attempt(work)); };
  if (event->key() == Qt::Key_F3) return attempt([this] { Find(); });
  if (control && event->key() == Qt::Key_Home) return attempt([this] { GoTo(1); });
  if (control && event->key() == Qt::Key_End) return attempt([this] { GoTo(pages_->Count()); });
  if (control && (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Equal)) return Zoom(1);
  if (control && event->key() == Qt::Key_Minus) return Zoom(-1);
  if (control && event->key() == Qt::Key_F) return ui_->txtFind->setFocus();
  QDialog::keyPressEvent(event);
}

}  // namespace qbx
