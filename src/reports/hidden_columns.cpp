#include "reports/hidden_columns.h"

#include <map>

namespace qbx {

namespace {

/// A column of the list, ordered by its left edge.
struct ListColumn {
  QString field;
  qreal end = 0;
};

std::map<qreal, ListColumn> ColumnsOf(const ReportDefinition& report) {
  std::map<qreal, ListColumn> columns;
  for (const ReportSection& detail : report.details)
    for (const ReportObject& object : detail.objects)
      if (!object.column.isEmpty()) columns[object.frame.left()] = {object.column.toLower(), object.frame.right()};
  return columns;
}

/// How far an object at `left` moves: by the width of each hidden column before it, up to the next column's left edge.
qreal MoveOf(qreal left, const std::map<qreal, ListColumn>& columns, const QSet<QString>& fields) {
  qreal move = 0;
  for (auto column = columns.begin(); column != columns.end() && column->first < left; ++column) {
    if (!fields.contains(column->second.field)) continue;
    const auto next = std::next(column);
    move += (next == columns.end() ? column->second.end : next->first) - column->first;
  }
  return move;
}

}  // namespace

void HideColumns(ReportDefinition& report, const QSet<QString>& fields) {
  const std::map<qreal, ListColumn> columns = ColumnsOf(report);
  ForEachSection(report, [&](ReportSection& section) {
    std::erase_if(section.objects,
                  [&](const ReportObject& object) { return fields.contains(object.column.toLower()); });
    for (ReportObject& object : section.objects)
      if (!object.column.isEmpty()) object.frame.translate(-MoveOf(object.frame.left(), columns, fields), 0);
  });
}

}  // namespace qbx
