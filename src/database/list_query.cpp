#include "database/list_query.h"

#include "util/tagged_string.h"
#include "util/text.h"

namespace qbx {

ListRules ListRules::FromTag(const QString& tag) {
  const qint64 maxLength = LeadingInteger(strGetTag(tag, QStringLiteral("MaxLength")));
  const bool cuts = maxLength > 0 && maxLength <= std::numeric_limits<int>::max();
  return {.upperCase = strGetTag(tag, QStringLiteral("CAPS")) == QLatin1String("1"),
          .maxLength = cuts ? static_cast<int>(maxLength) : 0};
}

std::optional<std::vector<ListRow>> FillListFromQuery(Statements& statements, const QString& sql,
                                                      const QString& textField, const QString& dataField,
                                                      const ListRules& rules) {
  Recordset records;
  // All rows are read at once. A connection that drops halfway is then a failure of the statement, which reports it.
  if (statements.dbOpenRec(records, sql, CursorType::kForwardOnly, LockType::kReadOnly, kOptionStoredProcedure))
    return std::nullopt;
  if (records.ColumnIndex(textField) < 0) return std::nullopt;
  if (!dataField.isEmpty() && records.ColumnIndex(dataField) < 0) return std::nullopt;
  std::vector<ListRow> rows;
  for (; !records.Eof(); records.MoveNext()) {
    ListRow row;
    row.text = Statements::sysIsNull(records, textField).ToText();
    if (rules.upperCase) row.text = row.text.toUpper();
    if (rules.maxLength > 0) row.text = CutText(row.text, rules.maxLength);
    if (!dataField.isEmpty()) row.data = records.Field(dataField);
    rows.push_back(std::move(row));
  }
  return rows;
}

int RowToSelect(const std::vector<ListRow>& rows, const QString& text, const Value& data) {
  int selected = -1;
  bool textUsed = text.isEmpty();
  for (int index = 0; const ListRow& row : rows) {
    if (!data.IsNull() && row.data == data) selected = index;
    if (!textUsed && row.text == text) {
      selected = index;
      textUsed = true;
    }
    ++index;
  }
  return selected;
}

}  // namespace qbx
