#include "tds_server/error_wording.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>

namespace qbx::tds {
namespace {

constexpr int kTerminated = 3621;
constexpr int kUserError = 50000;
constexpr int kUsualClass = 16;

struct NumberClass {
  int number;
  int severity;
};

constexpr std::array kClasses = {
    NumberClass{102, 15},  NumberClass{105, 15},  NumberClass{137, 15},        NumberClass{156, 15},
    NumberClass{1205, 13}, NumberClass{2627, 14}, NumberClass{kTerminated, 0}, NumberClass{2601, 14},
    NumberClass{4060, 11}, NumberClass{942, 14},  NumberClass{18456, 14},
};

/// Errors of one statement only: later statements run.
constexpr std::array kOfOneStatement = {201, 220, 515, 547, 2601, 2627, 2812, 8114, 8115, 8134, 8144, 8145, 8152};

struct Wording {
  const char* engine;
  const char* today;
};

/// A current server puts names in double quotes, and names constraints in another way.
constexpr std::array kWordings = {
    Wording{"^(\\w+) statement conflicted with CHECK constraint '([^']*)'",
            "The \\1 statement conflicted with the CHECK constraint \"\\2\""},
    Wording{"occurred in database '([^']*)'", "occurred in database \"\\1\""},
};

int ClassOf(int number) {
  const auto* const found = std::ranges::find(kClasses, number, &NumberClass::number);
  return found == kClasses.end() ? kUsualClass : found->severity;
}

QString Today(const ProviderError& error) {
  constexpr int kConflict = 547;
  QString text = error.description;
  if (text.startsWith(u'[')) text = text.mid(text.indexOf(u']') + 1);
  if (error.number != kConflict) return text;
  for (const Wording& wording : kWordings)
    text.replace(QRegularExpression(QLatin1String(wording.engine)), QLatin1String(wording.today));
  return text;
}

}  // namespace

void WriteError(Answer& answer, const DatabaseError& error) {
  for (const ProviderError& each : error.Errors()) {
    const int number = each.number > 0 ? each.number : kUserError;
    answer.Message(number, ClassOf(number), Today(each));
  }
  if (error.Errors().empty()) answer.Message(kUserError, kUsualClass, error.Description());
}

bool EndsBatch(const DatabaseError& error) {
  const int number = error.Errors().empty() ? 0 : error.Errors().front().number;
  return number < kUserError && std::ranges::find(kOfOneStatement, number) == kOfOneStatement.end();
}

}  // namespace qbx::tds
