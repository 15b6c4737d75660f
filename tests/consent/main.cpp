// consent_rounds: random rounds of the whole program against its promises. See README.md.

#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <chrono>
#include <cstdio>
#include <memory>

#include "consent/real_round.h"
#include "platform/clock.h"

namespace {

using namespace qbx::consent;

void Print(const QString& line) {
  std::printf("%s\n", line.toUtf8().constData());
  std::fflush(stdout);
}

void PrintFailure(const RoundWishes& wishes, int number, int realEvery, const Story& story) {
  Print(QStringLiteral("Round %1 of seed %2 broke a rule. What happened:").arg(number).arg(wishes.seed));
  for (const QString& line : story.Lines())
    Print(QStringLiteral("  ") + line);
  QString again = QStringLiteral("consent_rounds --seed %1 --round %2").arg(wishes.seed).arg(number);
  if (wishes.customers > 0) again += QStringLiteral(" --customers %1").arg(wishes.customers);
  if (realEvery > 0) again += QStringLiteral(" --real-every %1").arg(realEvery);
  Print(QStringLiteral("To see it again: ") + again);
}

}  // namespace

int main(int argc, char** argv) {
  qbx::SettleTimeZone();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  CLI::App command("Random rounds of the whole program against its promises");
  RoundWishes wishes;
  int rounds = 300;
  int first = 1;
  int only = 0;
  bool story = false;
  int realEvery = 0;
  command.add_option("--rounds", rounds, "How many");
  command.add_option("--first", first, "Number of the first");
  command.add_option("--seed", wishes.seed, "Another seed: other rounds");
  command.add_option("--round", only, "This round alone");
  command.add_option("--real-every", realEvery, "Every Nth round with the real program and the sandbox (0: none)");
  command.add_option("--customers", wishes.customers, "Customers of each garage (default: 3 to 70)");
  command.add_flag("--story", story, "Tell what happened in every round");
  CLI11_PARSE(command, argc, argv);
  if (only > 0) {
    first = only;
    rounds = 1;
  }
  const auto start = std::chrono::steady_clock::now();
  RoundCounts counts;
  std::unique_ptr<qbx::test::SandboxProcess> sandbox;
  for (int number = first; number < first + rounds; ++number) {
    Story told;
    if (realEvery > 0 && number % realEvery == 0) {
      if (!sandbox) sandbox = std::make_unique<qbx::test::SandboxProcess>();
      counts += PlayRealRound(wishes, number, *sandbox, told);
    } else {
      counts += PlayRound(wishes, number, told);
    }
    if (told.Failed()) {
      PrintFailure(wishes, number, realEvery, told);
      return 1;
    }
    for (const QString& line : story ? told.Lines() : QStringList())
      Print(line);
  }
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  Print(QStringLiteral("%1 rounds of seed %2: %3 rows, %4 runs, %5 of which were killed, %6 messages and %7 letters "
                       "arrived; no rule was broken. %8 s")
            .arg(rounds)
            .arg(wishes.seed)
            .arg(counts.rows)
            .arg(counts.runs)
            .arg(counts.deaths)
            .arg(counts.arrived)
            .arg(counts.letters)
            .arg(seconds, 0, 'f', 1));
  return 0;
}
