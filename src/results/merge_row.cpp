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
  values.title = rows.Field(u"Title"_qs).ToText();
  values.firstname = rows.Field(u"Firstname"_qs).ToText();
  values.lastname = rows.Field(u"Lastname"_qs).ToText();
  values.contact = rows.Field(u"Contact"_qs).ToText();
  values.make = rows.Field(u"Make"_qs).ToText();
  values.model = rows.Field(u"Model"_qs).ToText();
  values.regno = rows.Field(u"Vehicle"_qs).ToText();
  values.duedate = DateText(rows.Field(u"Recall_Date"_qs));
  if (blank == BlankContact::kBecomesCustomer && TrimBlanks(values.contact).isEmpty()) values.contact = u"Customer"_qs;
  return values;
}

}  // namespace qbx
