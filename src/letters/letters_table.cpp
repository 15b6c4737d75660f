#include "letters/letters_table.h"

#include "util/text.h"

namespace qbx {

bool LettersTable::Begin() {
  if (!statements_.dbExecute(QStringLiteral("DELETE FROM [Letters]") + WhereSession()).Ok()) return false;
  if (statements_.dbOpenRec(letters_, QStringLiteral("SELECT TOP 1 * FROM Letters"), CursorType::kDynamic,
                            LockType::kOptimistic))
    return false;
  letters_.SetWritable(statements_.Shared().Driver(), QStringLiteral("Letters"), QStringLiteral("LetterID"));
  return true;
}

void LettersTable::Add(const LetterRow& row) {
  letters_.AddNew();
  letters_.Set(QStringLiteral("SessionID"), session_);
  letters_.Set(QStringLiteral("Letter"), row.letter);
  letters_.Set(QStringLiteral("NameAddress"), row.nameAddress);
  letters_.Set(QStringLiteral("Contact"), row.contact);
  letters_.Set(QStringLiteral("Telephone"), row.telephone);
  letters_.Set(QStringLiteral("Mobile"), row.mobile);
  letters_.Set(QStringLiteral("Vehicle"), row.vehicle);
  letters_.Update();
}

QStringList LettersTable::Keys() {
  const std::unique_ptr<RowSource> rows = statements_.Shared().Driver().Execute(
      QStringLiteral("SELECT LetterID FROM [Letters]") + WhereSession() + QStringLiteral(" ORDER BY LetterID"));
  QStringList keys;
  while (rows->Next())
    keys += rows->At(0).ToValue().ToText();
  return keys;
}

QString LettersTable::WhereSession() const {
  return QStringLiteral(" WHERE SessionID = ") + SqlQuoted(session_);
}

}  // namespace qbx
