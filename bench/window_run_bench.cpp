// Measures what the windows add to a mailshot: the longest time in which its progress could not be painted, the
// processor time for a row compared with a run without windows, and how many messages are still sent after "Pause
// Sending".
//
//   window_run_bench email|text [ROUNDS [ROWS...]]     default: 5 rounds of 1000, 5000 and 20000 rows
//
// Runs on the display when there is one, otherwise offscreen; QT_QPA_PLATFORM chooses. TMPDIR chooses the disk. Pauses
// that only let the user read take no time. The two sides run in turn. Processor times are of all threads of this
// process. The servers run in another process.

#include <QtWidgets>
#include <cstring>

#include "hostdb/sample_garage.h"
#include "marketing/program.h"
#include "marketing/ui/frmMain.h"
#include "platform/ui/widget_ui.h"
#include "support/mailshot_rows.h"
#include "support/plain_database.h"
#include "support/rounds.h"
#include "support/sample_program.h"
#include "support/sink_process.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

constexpr int kHeadlessCampaign = -5;
constexpr int kDemandEvery = 40;  // milliseconds

/// Windows without pauses. Every question is answered Yes.
class HurriedUi final : public WidgetUi {
 public:
  MessageAnswer ShowMessage(const Message& message) override {
    if (message.buttons == MessageButtons::kOk) Fail(message.text.toUtf8().constData());
    return MessageAnswer::kYes;
  }
  void Pause(int) override { PumpEvents(); }
};

/// Notes when any of some widgets is painted.
class PaintWatch final : public QObject {
 public:
  void Watch(QWidget& widget) { widget.installEventFilter(this); }
  void Start() {
    last_.start();
    longest_ = 0;
    paints_ = 0;
  }
  void Note() { longest_ = std::max(longest_, static_cast<double>(last_.nsecsElapsed()) / 1e6); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      Note();
      last_.start();
      ++paints_;
    }
    return QObject::eventFilter(watched, event);
  }
  [[nodiscard]] double Longest() const { return longest_; }
  [[nodiscard]] int Paints() const { return paints_; }

 private:
  QElapsedTimer last_;
  double longest_ = 0;
  int paints_ = 0;
};

void SendThere(Options& options, const SinkProcess& sink) {
  options.SMTP_Server = QStringLiteral("127.0.0.1");
  options.SMTP_Port = QString::number(sink.Port());
  options.SMTP_UserName = options.SMTP_Password = QString();
  options.SMS_Server = QStringLiteral("127.0.0.1:") + options.SMTP_Port;
}

class Bench {
 public:
  Bench(const SinkProcess& sink, Channel channel, int rows)
      : sink_(sink), channel_(channel), rows_(rows), headless_(10), program_(ui_, Setup()) {
    headlessData_.emplace(OpenPlain(headless_.File(), clock_));
    AddMailshotRows(headlessData_->Handle(), kHeadlessCampaign, channel, rows);
    headless_.Start();
    SendThere(headless_.App().options, sink);
    OpenCampaign();
    SendThere(program_.App().options, sink);
    for (const char* name : {"pbEmail", "lblRunProgress"})
      watch_.Watch(Find<QWidget>(name));
  }

  void Run(int rounds) {
    SendHeadless();
    SendInWindow();
    for (int round = 0; round < rounds; ++round) {
      headlessTimes_.push_back(SendHeadless());
      windowTimes_.push_back(SendInWindow());
      added_.push_back((windowTimes_.back() - headlessTimes_.back()) * 1000 / rows_);
      gaps_.push_back(watch_.Longest());
    }
    std::printf(
        "%6d rows: processor a row %6.1f us headless, %6.1f us in the window, added %6.1f us; longest gap between paints, median %4.0f ms, worst %4.0f ms (%d paints)\n",
        rows_, Median(headlessTimes_) * 1000 / rows_, Median(windowTimes_) * 1000 / rows_, Median(added_),
        Median(gaps_), *std::max_element(gaps_.begin(), gaps_.end()), watch_.Paints());
    Pause();
  }

 private:
  template <typename Control>
  Control& Find(const char* name) {
    auto* control = program_.MainWindow()->findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr) Fail(name);
    return *control;
  }

  ApplicationSetup Setup() {
    const QString folder = garage_.path();
    if (const auto problem =
            MakeSampleGarage(File(), {.customers = 10, .asOf = QDate(2026, 6, 1)}, ExistingFile::kRefuse))
      Fail(qPrintable(*problem));
    return {.ui = ui_, .clock = clock_, .folders = {.program = folder + QLatin1Char('/'), .registry = folder}};
  }
  [[nodiscard]] QString File() const { return garage_.filePath(QStringLiteral("QBXKorvelManager.db")); }

  /// Opens the last page with a campaign of due rows.
  void OpenCampaign() {
    if (program_.Start(QStringLiteral("/userid:\"Bench\"")) != StartOutcome::kRunning)
      Fail("The program did not start.");
    Find<QPushButton>("cmdNew").click();
    windowData_.emplace(OpenPlain(File(), clock_));
    AddMailshotRows(windowData_->Handle(), program_.App().campaign.record.ID, channel_, rows_);
    auto& tabs = Find<QTabWidget>("ssTabMain");
    tabs.setCurrentIndex(2);
    tabs.setCurrentIndex(3);
    const MailshotTemplates texts = SampleTemplates();
    Find<QPlainTextEdit>("txtSMS").setPlainText(texts.sms);
    Find<QLineEdit>("txtEmailSubject").setText(texts.emailSubject);
    Find<QPlainTextEdit>("txtEmailBody").setPlainText(texts.emailBody);
    tabs.setCurrentIndex(4);
  }

  void ExpectAll() const {
    const int questions = channel_ == Channel::kSms ? 1 : 0;  // the one about the credits
    if (sink_.TakeCount() != rows_ + questions) Fail("the messages did not all arrive");
  }

  double SendHeadless() {
    ResetMailshot(headlessData_->Handle());
    MailshotObserver observer;
    const double before = ProcessMilliseconds();
    Mailshot run = headless_.Desk().MakeMailshot(observer);
    (void)run.Send(kHeadlessCampaign, SampleTemplates());
    const double time = ProcessMilliseconds() - before;
    ExpectAll();
    return time;
  }

  double SendInWindow() {
    ResetMailshot(windowData_->Handle());
    const double before = ProcessMilliseconds();
    watch_.Start();
    // Nothing changes on the screen while the rows are read. Paints on demand show that it could.
    auto& line = Find<QWidget>("lblRunProgress");
    QTimer demand;
    QObject::connect(&demand, &QTimer::timeout, &line, qOverload<>(&QWidget::update));
    demand.start(kDemandEvery);
    Find<QPushButton>("cmdSendSMS").click();
    QCoreApplication::processEvents();
    watch_.Note();
    const double time = ProcessMilliseconds() - before;
    ExpectAll();
    return time;
  }

  void Pause() {
    ResetMailshot(windowData_->Handle());
    auto& pause = Find<QPushButton>("cmdPause");
    bool paused = false;
    QTimer soon;
    QObject::connect(&soon, &QTimer::timeout, &pause, [&] {
      if (Find<QProgressBar>("pbEmail").value() < 1) return;
      soon.stop();
      (void)sink_.TakeCount();
      pause.click();
      paused = true;
    });
    soon.start(100);
    Find<QPushButton>("cmdSendSMS").click();
    if (!paused) return (void)std::printf("             the run was too short to be paused\n");
    std::printf("             messages after Pause: %d\n", sink_.TakeCount());
  }

  const SinkProcess& sink_;
  Channel channel_;
  int rows_;
  SystemClock clock_;
  SampleProgram headless_;
  std::optional<SqliteFile> headlessData_;
  QTemporaryDir garage_;
  HurriedUi ui_;
  MarketingProgram program_;
  std::optional<SqliteFile> windowData_;
  PaintWatch watch_;
  std::vector<double> headlessTimes_;
  std::vector<double> windowTimes_;
  std::vector<double> added_;
  std::vector<double> gaps_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) Fail("usage: window_run_bench email|text [ROUNDS [ROWS...]]");
  const bool texts = std::strcmp(argv[1], "text") == 0;
  const SinkProcess sink(texts ? LoopbackSink::Protocol::kHttp : LoopbackSink::Protocol::kSmtp);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsSet("DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  SettleTimeZone();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);  // shows each line at once, also in a file
  std::printf("%s, %s\n", argv[1], qPrintable(QGuiApplication::platformName()));
  std::vector<int> rows;
  for (int i = 3; i < argc; ++i)
    rows.push_back(std::atoi(argv[i]));
  if (rows.empty()) rows = {1000, 5000, 20'000};
  for (const int each : rows)
    Bench(sink, texts ? Channel::kSms : Channel::kEmail, each).Run(argc > 2 ? std::atoi(argv[2]) : 5);
}
