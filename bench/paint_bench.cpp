// Measures the longest time in which the main window does not paint while a query runs. A click on Cancel waits at most
// as long. Uses the embedded database, without a delay and with a delay for every call.
//
//   paint_bench [CUSTOMERS [DELAY...]]     delays in milliseconds; default: 0 50 500

#include <QtWidgets>

#include "hostdb/sample_garage.h"
#include "marketing/program.h"
#include "marketing/ui/frmMain.h"
#include "platform/ui/widget_ui.h"
#include "support/rounds.h"
#include "support/slow_session.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

/// Asks the window every few milliseconds to paint, and notes when it painted.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QWidget& window) {
    connect(&timer_, &QTimer::timeout, &window, [&window] { window.update(); });
    timer_.start(2);
    window.installEventFilter(this);
    last_.start();
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      Note();
      ++paints_;
    }
    return QObject::eventFilter(watched, event);
  }
  void Note() {
    longest_ = std::max(longest_, static_cast<double>(last_.nsecsElapsed()) / 1e6);
    last_.restart();
  }
  [[nodiscard]] double Longest() const { return longest_; }
  [[nodiscard]] int Paints() const { return paints_; }

 private:
  QTimer timer_;
  QElapsedTimer last_;
  double longest_ = 0;
  int paints_ = 0;
};

template <typename Control>
Control& Find(QWidget& window, const char* name) {
  Control* control = window.findChild<Control*>(QString::fromLatin1(name));
  if (control == nullptr) Fail(name);
  return *control;
}

void Measure(const QString& folder, int delay) {
  const SystemClock clock;
  WidgetUi ui;
  MarketingProgram program(
      ui, {.ui = ui,
           .clock = clock,
           .folders = {.program = folder + QLatin1Char('/'), .registry = folder},
           .wrapSessions = [delay](SessionFactory inner) { return SlowSessions(std::move(inner), delay); }});
  if (program.Start(QStringLiteral("/userid:\"Bench\"")) != StartOutcome::kRunning) Fail("The program did not start.");
  program.App().options.Only_Send_Comms_When_Opted_In = false;  // removes no rows, each with the delay
  frmMain& window = *program.MainWindow();
  Find<QPushButton>(window, "cmdNew").click();
  auto& tree = Find<QTreeWidget>(window, "tvQuery");
  tree.setCurrentItem(tree.topLevelItem(0)->child(0));
  QPushButton& next = Find<QPushButton>(window, "cmdNext0");
  PaintWatch watch(window);
  const double time = Milliseconds([&] { next.click(); });
  watch.Note();
  if (Find<QTabWidget>(window, "ssTabMain").currentIndex() != 1) Fail("The query did not run.");
  std::printf("%4d ms a call: query %6.0f ms, %4d paints, longest gap %5.0f ms\n", delay, time, watch.Paints(),
              watch.Longest());
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  SettleTimeZone();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const int customers = argc > 1 ? std::atoi(argv[1]) : 100'000;
  const QTemporaryDir garage;
  const SampleGarageSettings settings{.customers = customers, .asOf = QDate::currentDate()};
  if (const auto problem =
          MakeSampleGarage(garage.filePath(QStringLiteral("QBXKorvelManager.db")), settings, ExistingFile::kRefuse))
    Fail(qPrintable(*problem));
  std::vector<int> delays;
  for (int i = 2; i < argc; ++i)
    delays.push_back(std::atoi(argv[i]));
  if (delays.empty()) delays = {0, 50, 500};
  for (const int delay : delays)
    Measure(garage.path(), delay);
}
