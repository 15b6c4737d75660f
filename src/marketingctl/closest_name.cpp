#include "marketingctl/closest_name.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace qbx::ctl {

namespace {

/// How many characters must be inserted, removed or changed to turn one text into the other (Levenshtein).
int Distance(const QString& from, const QString& to) {
  std::vector<int> row(static_cast<size_t>(to.size()) + 1);
  std::iota(row.begin(), row.end(), 0);
  for (qsizetype i = 0; i < from.size(); ++i) {
    int diagonal = row[0];
    row[0] = static_cast<int>(i) + 1;
    for (size_t j = 1; j < row.size(); ++j) {
      const int changed = diagonal + (from[i] == to[static_cast<qsizetype>(j) - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, changed});
    }
  }
  return row.back();
}

}  // namespace

QString DidYouMean(const QString& typed, const QStringList& names) {
  constexpr int kLettersAMistake = 3;
  QString closest;
  int least = static_cast<int>(typed.size()) / kLettersAMistake + 2;
  for (const QString& name : names) {
    const bool begun = typed.size() >= kLettersAMistake && name.startsWith(typed, Qt::CaseInsensitive);
    if (begun) return QStringLiteral(" Did you mean %1?").arg(name);
    const int distance = Distance(typed.toLower(), name.toLower());
    if (distance >= least) continue;
    least = distance;
    closest = name;
  }
  return closest.isEmpty() ? QString() : QStringLiteral(" Did you mean %1?").arg(closest);
}

}  // namespace qbx::ctl
