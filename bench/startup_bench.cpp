// Measures the time from the start of the process to the first painted frame: of the window program on a sample garage,
// and of a Qt program that shows one label.
//
//   startup_bench [ROUNDS]
//
// Prints medians, offscreen and, when there is a display, on it. The two programs run in turn.

#include <QtCore>

#include "hostdb/sample_garage.h"
#include "support/rounds.h"

namespace {

using namespace qbx::bench;

double Run(const QString& program, const QStringList& arguments, const QProcessEnvironment& surroundings) {
  QProcess process;
  process.setProcessEnvironment(surroundings);
  process.setStandardErrorFile(QProcess::nullDevice());
  bool ended = false;
  const double time = Milliseconds([&] {
    process.start(program, arguments);
    ended = process.waitForFinished(30000);
  });
  if (!ended || process.exitCode() != 0) Fail("A program did not start.");
  return time;
}

void Measure(const char* name, const QString& platform, const QString& garage, int rounds) {
  QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
  surroundings.insert(QStringLiteral("QT_QPA_PLATFORM"), platform);
  surroundings.insert(QStringLiteral("QBX_PROGRAM_FOLDER"), garage);
  const QString folder = QCoreApplication::applicationDirPath() + QLatin1Char('/');
  const auto label = [&] { return Run(folder + QStringLiteral("startup_label"), {}, surroundings); };
  const auto program = [&] {
    return Run(folder + QStringLiteral("startup_program"), {QStringLiteral("/userid:Bench")}, surroundings);
  };
  (void)label();  // fills the page cache
  (void)program();
  std::vector<double> labels;
  std::vector<double> programs;
  for (int round = 0; round < rounds; ++round) {
    labels.push_back(label());
    programs.push_back(program());
  }
  std::printf("%-10s one label %6.1f ms, the program %6.1f ms: %.2f x\n", name, Median(labels), Median(programs),
              Median(programs) / Median(labels));
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 15;
  const QTemporaryDir garage;
  const qbx::SampleGarageSettings settings{.asOf = QDate::currentDate()};
  if (const auto problem = qbx::MakeSampleGarage(garage.filePath(QStringLiteral("QBXKorvelManager.db")), settings,
                                                 qbx::ExistingFile::kRefuse))
    Fail(qPrintable(*problem));
  Measure("offscreen", QStringLiteral("offscreen"), garage.path(), rounds);
  if (qEnvironmentVariableIsSet("DISPLAY")) Measure("display", QStringLiteral("xcb"), garage.path(), rounds);
}
