#include "printing/empty_columns.h"

#include "reports/report_values.h"

namespace qbx {

namespace {

QSet<QString> MarkedColumns(const Report& report) {
  QSet<QString> columns;
  for (const ReportObject* object : report.Objects())
    if (object != nullptr && !object->column.isEmpty()) columns.insert(object->column.toLower());
  return columns;
}

bool HoldsNothing(const Value& value) {
  return value.ToText().trimmed().isEmpty();
}

/// Inspects the rows of the report when the pager asks for them, and gives the pager none.
class ColumnInspector final : public ReportDatabase {
 public:
  ColumnInspector(const Report& report, ReportDatabase& database) : report_(report), database_(database) {}
  std::unique_ptr<ReportRows> Read(const QString& statement) override {
    empty = EmptyColumns(report_, *database_.Read(statement));
    return SpoolRows(nullptr);
  }

  QSet<QString> empty;

 private:
  const Report& report_;
  ReportDatabase& database_;
};

}  // namespace

QSet<QString> EmptyColumns(const Report& report, ReportRows& rows) {
  const ColumnNames names(rows.Columns());
  QHash<QString, int> unseen;
  for (const QString& column : MarkedColumns(report))
    if (const int index = names.IndexOf(column); index >= 0) unseen.insert(column, index);
  bool any = false;
  while (!unseen.isEmpty() && rows.Next()) {
    any = true;
    unseen.removeIf([&rows](const auto& column) { return !HoldsNothing(rows.At(column.value())); });
  }
  const QStringList empty = any ? unseen.keys() : QStringList();
  return {empty.begin(), empty.end()};
}

QSet<QString> EmptyColumns(const Report& report, ReportDatabase& database) {
  if (MarkedColumns(report).isEmpty()) return {};
  ColumnInspector inspector(report, database);
  static_cast<void>(report.LayOut(inspector));
  return inspector.empty;
}

}  // namespace qbx
