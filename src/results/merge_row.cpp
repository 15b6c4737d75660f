#include "results/merge_row.h"

#include "util/text.h"

namespace qbx {
namespace {

/// A date without its time. The text of a host that stores dates as text is passed unchanged.
QString DateText(const Value& value) {
  return value.Type() == ValueType::kDateTime ? MergeDate(value.ToDateTime().date()) : value.ToText();
}

}  // namespace

MergeValues MergeRow(const Recordset& rows, BlankContact blank) {
  MergeValues values;
  values.title = rows.Field(QStringLiteral("Title")).ToText();
  values.firstname = rows.Field(QStringLiteral("Firstname")).ToText();
  values.lastname = rows.Field(QStringLiteral("Lastname")).ToText();
  values.contact = rows.Field(QStringLiteral("Contact")).ToText();
  values.make = rows.Field(QStringLiteral("Make")).ToText();
  values.model = rows.Field(QStringLiteral("Model")).ToText();
  values.regno = rows.Field(QStringLiteral("Vehicle")).ToText();
  values.duedate = DateText(rows.Field(QStringLiteral("Recall_Date")));
  if (blank == BlankContact::kBecomesCustomer && TrimBlanks(values.contact).isEmpty())
    values.contact = QStringLiteral("Customer");
  return values;
}

}  // namespace qbx
