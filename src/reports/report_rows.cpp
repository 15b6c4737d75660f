#include "reports/report_rows.h"

#include <QDataStream>
#include <QIODevice>

#include "reports/spool.h"

namespace qbx {

namespace {

class RecordsetRows : public ReportRows {
 public:
  explicit RecordsetRows(Recordset records) : records_(std::move(records)) {}

  const std::vector<Column>& Columns() const override { return records_.Columns(); }
  bool Next() override { return ++row_ < records_.RecordCount(); }
  Value At(int column) const override { return records_.At(row_, column).ToValue(); }

 private:
  Recordset records_;
  qint64 row_ = -1;
};

void Write(QDataStream& out, const Cell& cell) {
  out << static_cast<quint8>(cell.type);
  switch (cell.type) {
    case ValueType::kNull:
      break;
    case ValueType::kDouble:
      out << cell.real;
      break;
    case ValueType::kText:
      out << QByteArray(cell.utf8.data(), static_cast<qsizetype>(cell.utf8.size()));
      break;
    default:
      out << cell.integer << cell.scale;
  }
}

Value Read(QDataStream& in) {
  quint8 type = 0;
  in >> type;
  Cell cell;
  cell.type = static_cast<ValueType>(type);
  QByteArray text;
  switch (cell.type) {
    case ValueType::kNull:
      break;
    case ValueType::kDouble:
      in >> cell.real;
      break;
    case ValueType::kText:
      in >> text;
      cell.utf8 = {text.constData(), static_cast<size_t>(text.size())};
      break;
    default:
      in >> cell.integer >> cell.scale;
  }
  return cell.ToValue();
}

class SpooledRows : public ReportRows {
 public:
  explicit SpooledRows(RowSource& source) : columns_(source.Columns()) {
    while (source.Next()) {
      QByteArray bytes;
      QDataStream out(&bytes, QIODevice::WriteOnly);
      for (int i = 0; i < static_cast<int>(columns_.size()); ++i)
        Write(out, source.At(i));
      rows_.Append(bytes);
    }
    values_.resize(columns_.size());
  }

  const std::vector<Column>& Columns() const override { return columns_; }

  bool Next() override {
    if (++row_ >= rows_.Count()) return false;
    QDataStream in(rows_.At(row_));
    for (Value& value : values_)
      value = Read(in);
    return true;
  }

  Value At(int column) const override { return values_[static_cast<size_t>(column)]; }

 private:
  std::vector<Column> columns_;
  Spool rows_;
  qint64 row_ = -1;
  std::vector<Value> values_;
};

}  // namespace

std::unique_ptr<ReportRows> RowsOfRecordset(Recordset records) {
  return std::make_unique<RecordsetRows>(std::move(records));
}

std::unique_ptr<ReportRows> SpoolRows(std::unique_ptr<RowSource> source) {
  if (!source) return RowsOfRecordset({});
  return std::make_unique<SpooledRows>(*source);
}

}  // namespace qbx
