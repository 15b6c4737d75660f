// scenario_runner FILE.js ... [--screenshots DIR] [--time-limit SECONDS]

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryFile>
#include <cstdio>

#include "batch.h"
#include "platform/clock.h"
#include "platform/ui/look.h"
#include "scenario.h"

namespace {

using qbx::scenario::BatchSettings;

// Hides the messages of the offscreen platform about itself, which come with each window.
void PrintUnlessNoise(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (text.startsWith(QLatin1String("This plugin does not support")) ||
      text.startsWith(QLatin1String("QStandardPaths:")))
    return;
  std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

/// Without a display and another wish, sets a screen of usual size.
class OffscreenScreen {
 public:
  OffscreenScreen() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !file_.open()) return;
    file_.write(R"({"screens": [{"name": "Desk", "x": 0, "y": 0, "width": 1920, "height": 1080,
                                 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1.0}]})");
    file_.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file_.fileName().toLocal8Bit());
  }

 private:
  QTemporaryFile file_;
};

int RunHere(int argc, char** argv, const BatchSettings& settings, const QString& folder) {
  qInstallMessageHandler(&PrintUnlessNoise);
  const OffscreenScreen screen;
  qbx::SettleTimeZone();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("marketing"));
  qbx::ApplyLook();
  // Closing the main window must not end the event loops of the scenario.
  QApplication::setQuitOnLastWindowClosed(false);
  return qbx::scenario::RunScenario(settings.files.value(0), settings.screenshots, folder) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  QStringList words;
  for (int i = 0; i < argc; ++i)
    words += QString::fromLocal8Bit(argv[i]);

  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Runs scenarios against the real windows; tests/scenarios/README.md is their reference.");
  parser.addPositionalArgument("FILE.js ...", "scenarios; each runs in a process of its own");
  const QCommandLineOption help("help", "Shows this help.");
  const QCommandLineOption screenshots("screenshots", "Folder for the pictures that scenarios take.", "DIR");
  const QCommandLineOption limit("time-limit", "Seconds that one scenario may take (120).", "SECONDS", "120");
  const QCommandLineOption here("here", "Runs one file in this very process, for a debugger.");
  const QCommandLineOption on("on", "With --here: the program folder of another runner, to restart on.", "DIR");
  parser.addOptions({help, screenshots, limit, here, on});
  QString problem = parser.parse(words) ? QString() : parser.errorText();
  bool isNumber = false;
  const int seconds = parser.value(limit).toInt(&isNumber);
  if (problem.isEmpty() && (!isNumber || seconds < 1))
    problem = QStringLiteral("--time-limit takes a number of seconds.");
  if (problem.isEmpty() && parser.positionalArguments().isEmpty()) problem = QStringLiteral("Name a scenario.");
  if (parser.isSet(help) || !problem.isEmpty()) {
    const QString text =
        parser.helpText().replace(QLatin1String("<executable_name>"), QLatin1String("scenario_runner"));
    std::fputs(qPrintable(parser.isSet(help) ? text : problem + QLatin1Char('\n') + text),
               parser.isSet(help) ? stdout : stderr);
    return parser.isSet(help) ? 0 : 2;
  }
  const BatchSettings settings{
      .files = parser.positionalArguments(), .screenshots = parser.value(screenshots), .timeLimitSeconds = seconds};
  if (parser.isSet(here)) return RunHere(argc, argv, settings, parser.value(on));
  QCoreApplication application(argc, argv);
  return qbx::scenario::RunBatch(settings);
}
