#include "letters/letters_table.h"

#include "settings/run_key.h"
#include "util/text.h"

namespace qbx {

namespace {

QString WhereSessionIs(const QString& session) {
  return QStringLiteral(" WHERE SessionID = ") + SqlQuoted(session);
}

}  // namespace

bool LettersTable::Begin(const QDate& today) {
  if (!Delete(session_)) return false;
  DeleteLeftBehind(today);
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
  const std::unique_ptr<RowSource> rows =
      statements_.Shared().Driver().Execute(QStringLiteral("SELECT LetterID FROM [Letters]") +
                                            WhereSessionIs(session_) + QStringLiteral(" ORDER BY LetterID"));
  QStringList keys;
  while (rows->Next())
    keys += rows->At(0).ToValue().ToText();
  return keys;
}

void LettersTable::Clear() {
  static_cast<void>(Delete(session_));
}

bool LettersTable::Delete(const QString& session) {
  return statements_.dbExecute(QStringLiteral("DELETE FROM [Letters]") + WhereSessionIs(session)).Ok();
}

void LettersTable::DeleteLeftBehind(const QDate& today) {
  Recordset sessions;
  if (statements_.dbOpenRec(sessions, QStringLiteral("SELECT DISTINCT SessionID FROM [Letters]"))) return;
  for (; !sessions.Eof(); sessions.MoveNext()) {
    const QString session = sessions.Field(QStringLiteral("SessionID")).ToText();
    const std::optional<QDate> day = DayOfRunKey(session);
    if (day && day->daysTo(today) > kKept && !Delete(session)) return;
  }
}

}  // namespace qbx
