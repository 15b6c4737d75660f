#include "database/embedded/functions.h"

#include <sqlite3.h>

#include <QString>
#include <algorithm>
#include <string_view>

#include "database/text_compare.h"

namespace qbx {
namespace {

std::string_view TextOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return text == nullptr ? std::string_view()
                         : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

bool IsNull(sqlite3_value* value) {
  return sqlite3_value_type(value) == SQLITE_NULL;
}

void ResultText(sqlite3_context* context, const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  sqlite3_result_text64(context, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT,
                        SQLITE_UTF8);
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

int Collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return CompareNoCase({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                       {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

QDateTime NowOf(sqlite3_context* context) {
  return static_cast<const Clock*>(sqlite3_user_data(context))->Now();
}

void ResultTime(sqlite3_context* context, const QDateTime& time) {
  ResultText(context, time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")));
}

void GetDate(sqlite3_context* context, int, sqlite3_value**) {
  ResultTime(context, NowOf(context));
}

void GetUtcDate(sqlite3_context* context, int, sqlite3_value**) {
  ResultTime(context, NowOf(context).toUTC());
}

void Len(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (IsNull(arguments[0])) return sqlite3_result_null(context);
  std::string_view text = TextOf(arguments[0]);
  while (!text.empty() && text.back() == ' ')
    text.remove_suffix(1);
  int units = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80) units += byte >= 0xF0 ? 2 : 1;
  }
  sqlite3_result_int(context, units);
}

/// Position of `find` in ASCII text, -1 when there is none.
qsizetype FindAscii(std::string_view find, std::string_view text, qsizetype from) {
  const auto same = [](char a, char b) {
    const auto fold = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return fold(a) == fold(b);
  };
  if (from > static_cast<qsizetype>(text.size())) return -1;
  const auto at = std::search(text.begin() + from, text.end(), find.begin(), find.end(), same);
  return at == text.end() ? -1 : at - text.begin();
}

void CharIndex(sqlite3_context* context, int count, sqlite3_value** arguments) {
  if (IsNull(arguments[0]) || IsNull(arguments[1])) return sqlite3_result_null(context);
  const std::string_view find = TextOf(arguments[0]);
  const std::string_view text = TextOf(arguments[1]);
  const qsizetype from = count > 2 ? std::max(0, sqlite3_value_int(arguments[2]) - 1) : 0;
  if (find.empty()) return sqlite3_result_int(context, 0);
  const qsizetype at = IsAscii(find) && IsAscii(text)
                           ? FindAscii(find, text, from)
                           : QString::fromUtf8(text).indexOf(QString::fromUtf8(find), from, Qt::CaseInsensitive);
  sqlite3_result_int64(context, at + 1);
}

template <QString (*Convert)(const QString&)>
void ChangeCase(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (IsNull(arguments[0])) return sqlite3_result_null(context);
  ResultText(context, Convert(QString::fromUtf8(TextOf(arguments[0]))));
}
QString ToLower(const QString& text) {
  return text.toLower();
}
QString ToUpper(const QString& text) {
  return text.toUpper();
}

void RaiseError(sqlite3_context* context, int, sqlite3_value** arguments) {
  const QByteArray text = QByteArray("#") + QByteArray::number(sqlite3_value_int(arguments[0])) + '#' +
                          QString::fromUtf8(TextOf(arguments[1])).toUtf8();
  sqlite3_result_error(context, text.constData(), static_cast<int>(text.size()));
}

}  // namespace

void RegisterFunctions(sqlite3* database, const Clock& clock) {
  constexpr int kPure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  sqlite3_create_collation_v2(database, "NOCASE", SQLITE_UTF8, nullptr, Collate, nullptr);
  auto* clockData = const_cast<Clock*>(&clock);  // SQLite takes a plain pointer, but only reads
  sqlite3_create_function_v2(database, "GetDate", 0, SQLITE_UTF8 | SQLITE_INNOCUOUS, clockData, GetDate, nullptr,
                             nullptr, nullptr);
  sqlite3_create_function_v2(database, "GetUtcDate", 0, SQLITE_UTF8 | SQLITE_INNOCUOUS, clockData, GetUtcDate, nullptr,
                             nullptr, nullptr);
  sqlite3_create_function_v2(database, "Len", 1, kPure, nullptr, Len, nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(database, "CharIndex", 2, kPure, nullptr, CharIndex, nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(database, "CharIndex", 3, kPure, nullptr, CharIndex, nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(database, "Lower", 1, kPure, nullptr, ChangeCase<ToLower>, nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(database, "Upper", 1, kPure, nullptr, ChangeCase<ToUpper>, nullptr, nullptr, nullptr);
  sqlite3_create_function_v2(database, "RaiseError", 2, SQLITE_UTF8 | SQLITE_INNOCUOUS, nullptr, RaiseError, nullptr,
                             nullptr, nullptr);
}

}  // namespace qbx
