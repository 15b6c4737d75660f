// The values of the names in a report, row by row.

#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

#include "reports/report_definition.h"
#include "reports/report_rows.h"

namespace qbx {

/// Placeholders in a text for values that are known later. They are noncharacters of Unicode, kept for use inside
/// programs (The Unicode Standard, section 23.7), and are removed from all values.
inline constexpr QChar kPagesMark = QChar(u'\uFDD0');  ///< the number of pages of the report
/// Begins a part that is left out, together with the number, as long as the number is unknown.
inline constexpr QChar kBeforePagesMark = QChar(u'\uFDD1');
inline constexpr QChar kGroupPagesMark = QChar(u'\uFDD2');  ///< the number of pages of the group

/// Values of parameters by name ("@UserID"). A missing one is unset.
using ParameterValues = QHash<QString, Value>;

/// The columns of rows by name.
class ColumnNames {
 public:
  explicit ColumnNames(const std::vector<Column>& columns);

  /// The column with this name, ignoring case. \return -1 when there is none
  [[nodiscard]] int IndexOf(const QString& name) const;

 private:
  QHash<QString, int> byName_;           // in lower case
  mutable QHash<QString, int> written_;  // as they were asked for
};

/// A row with the names of its columns.
struct ReportRow {
  std::shared_ptr<const ColumnNames> columns = {};
  std::vector<Value> values = {};

  /// NULL for a field that does not exist.
  [[nodiscard]] Value Field(const QString& name) const;
};

/// Sums and counts of the rows so far, in the whole report (level 0) and in each group (from level 1, the outermost).
class ReportTotals {
 public:
  explicit ReportTotals(const ReportDefinition& report);

  void Add(const ReportRow& row);
  void Restart(size_t level);
  [[nodiscard]] double Sum(size_t level, const QString& field) const { return levels_[level].sums.value(field); }
  [[nodiscard]] qint64 Count(size_t level) const { return levels_[level].count; }

 private:
  struct Level {
    QHash<QString, double> sums;
    qint64 count = 0;
  };
  QStringList fields_;
  std::vector<Level> levels_;
};

/// The page numbers for a text.
struct PageNumbers {
  int page = 0;
  int groupPage = 0;
  int groupNumber = 0;
};

/// Looks up the values of the pieces of a text.
struct ReportValues {
  const ReportDefinition& report;
  const ParameterValues& parameters;
  const ReportRow& row;
  const ReportTotals& totals;
  size_t level = 0;  ///< of the totals that a sum shows
  PageNumbers numbers = {};

  [[nodiscard]] QString Text(const TextObject& object) const;
  [[nodiscard]] Value Evaluate(const Formula& formula) const;

 private:
  [[nodiscard]] Value ValueOf(const TextPiece& piece) const;
};

/// A value as a report shows it.
/// \param format  of a date in Qt's form ("dd/MM/yyyy"); of a number its decimals, with a comma for groups of three
///                ("0.00", "#,##0"); of a flag its two texts ("Yes|No"); empty for the program's usual form
[[nodiscard]] QString FormatValue(const Value& value, const QString& format);

}  // namespace qbx
