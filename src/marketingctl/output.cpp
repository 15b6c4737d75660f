#include "marketingctl/output.h"

#include <QJsonDocument>
#include <algorithm>
#include <cstdio>

namespace qbx::ctl {

namespace {

constexpr int kWidestColumn = 40;

QString CellText(const QJsonValue& value) {
  QString text = value.toVariant().toString().simplified();
  if (text.size() > kWidestColumn) text = text.left(kWidestColumn - 3) + QStringLiteral("...");
  return text;
}

void Print(const QByteArray& bytes) {
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
  std::fputc('\n', stdout);
}

bool jsonPrinted = false;  // of the process, like stdout

void PrintDocument(const QJsonDocument& document) {
  jsonPrinted = true;
  Print(document.toJson(QJsonDocument::Compact));
}

}  // namespace

QJsonValue ToJson(const Value& value) {
  switch (value.Type()) {
    case ValueType::kNull:
      return QJsonValue::Null;
    case ValueType::kBool:
      return value.ToBool();
    case ValueType::kInt:
      return value.ToInt();
    case ValueType::kDouble:
    case ValueType::kDecimal:
      return value.ToDouble();
    case ValueType::kDateTime: {
      const QDateTime time = value.ToDateTime();
      const QString date = time.date().toString(Qt::ISODate);
      // A wall-clock time has no zone, so none is printed.
      return time.time() == QTime(0, 0) ? date : date + QLatin1Char('T') + time.time().toString(Qt::ISODate);
    }
    case ValueType::kText:
      break;
  }
  return value.ToText();
}

QJsonObject RowToJson(const Recordset& rows) {
  QJsonObject object;
  const auto& columns = rows.Columns();
  for (size_t i = 0; i < columns.size(); ++i)
    object.insert(columns[i].name, ToJson(rows.Field(static_cast<int>(i))));
  return object;
}

QJsonArray RowsToJson(Recordset& rows) {
  QJsonArray array;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext())
    array.append(RowToJson(rows));
  return array;
}

QString Counted(int count, const char* noun) {
  return QStringLiteral("%1 %2%3").arg(count).arg(QLatin1String(noun), QLatin1String(count == 1 ? "" : "s"));
}

void PrintLine(const QString& line) {
  Print(line.toUtf8());
}
void PrintNote(const QString& line) {
  std::fprintf(stderr, "%s\n", line.toUtf8().constData());
}
void PrintJson(const QJsonObject& object) {
  PrintDocument(QJsonDocument(object));
}
void PrintJson(const QJsonArray& array) {
  PrintDocument(QJsonDocument(array));
}
bool JsonPrinted() {
  return jsonPrinted;
}

void PrintTable(const QJsonArray& rows, const QStringList& columns) {
  std::vector<qsizetype> widths;
  for (const QString& column : columns) {
    qsizetype width = column.size();
    for (const QJsonValue row : rows)
      width = std::max(width, CellText(row[column]).size());
    widths.push_back(width);
  }
  const auto printRow = [&](const auto& cell) {
    QString line;
    for (qsizetype i = 0; i < columns.size(); ++i) {
      line += cell(columns[i]).leftJustified(widths[static_cast<size_t>(i)] + 2);
    }
    PrintLine(line.trimmed());
  };
  printRow([](const QString& column) { return column; });
  for (const QJsonValue row : rows)
    printRow([&](const QString& column) { return CellText(row[column]); });
}

}  // namespace qbx::ctl
