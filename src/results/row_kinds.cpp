#include "results/row_kinds.h"

#include <QSet>
#include <bit>
#include <utility>

#include "results/flag_columns.h"
#include "results/mobile_number.h"

namespace qbx {

namespace {

constexpr quint8 Bit(RowKind kind) {
  return static_cast<quint8>(1U << static_cast<unsigned>(kind));
}

constexpr quint8 kOfFlags = Bit(RowKind::kText) | Bit(RowKind::kEmail) | Bit(RowKind::kLetter) | Bit(RowKind::kNothing);
constexpr quint8 kOfTroubles = Bit(RowKind::kFailed) | Bit(RowKind::kInDoubt);
constexpr int kInDoubtState = 0;

/// The indexes of the columns on which the kinds depend.
struct KindColumns {
  explicit KindColumns(const Recordset& rows)
      : record(rows.ColumnIndex(QStringLiteral("RecordID"))),
        text(rows.ColumnIndex(kSendSmsFlag)),
        email(rows.ColumnIndex(kSendEmailFlag)),
        letter(rows.ColumnIndex(kSendLetterFlag)),
        mobile(rows.ColumnIndex(QStringLiteral("Mobile"))) {}

  [[nodiscard]] quint8 KindsOf(const StoredRow& row) const {
    const auto bit = [&row](int column, RowKind kind) { return row.At(column).integer != 0 ? Bit(kind) : quint8{0}; };
    const auto kinds =
        static_cast<quint8>(bit(text, RowKind::kText) | bit(email, RowKind::kEmail) | bit(letter, RowKind::kLetter));
    return kinds == 0 ? Bit(RowKind::kNothing) : kinds;
  }

  int record, text, email, letter, mobile;
};

/// Numbers phones from 1, with the same number for the same phone; 0 is none.
class Phones {
 public:
  quint32 NumberOf(const Cell& mobile) {
    const QString phone = PhoneOf(QString::fromUtf8(mobile.utf8.data(), static_cast<qsizetype>(mobile.utf8.size())));
    if (phone.isEmpty()) return 0;
    quint32& number = numbers_[phone];
    if (number == 0) number = static_cast<quint32>(numbers_.size());
    return number;
  }

 private:
  QHash<QString, quint32> numbers_;
};

}  // namespace

QStringList RowKindNames() {
  return {QStringLiteral("all"),
          QStringLiteral("gets a text"),
          QStringLiteral("gets an e-mail"),
          QStringLiteral("gets a letter"),
          QStringLiteral("gets nothing"),
          QStringLiteral("failed"),
          QStringLiteral("in doubt"),
          QStringLiteral("same mobile more than once")};
}

RowKinds::RowKinds() : rows_(std::make_shared<Rows>()) {}

void RowKinds::Read(const Recordset& rows, Recordset troubles) {
  rows_->clear();
  rows_->reserve(rows.RecordCount());
  const KindColumns columns(rows);
  Phones phones;
  rows.Visit([&](const StoredRow& row) {
    rows_->insert(row.At(columns.record).integer, {columns.KindsOf(row), phones.NumberOf(row.At(columns.mobile))});
  });
  Complete(std::move(troubles));
}

void RowKinds::ReadAgain(const Recordset& fresh, const std::vector<qint64>& changed, Recordset troubles) {
  const KindColumns columns(fresh);
  QSet<qint64> gone(changed.begin(), changed.end());
  fresh.Visit([&](const StoredRow& row) {
    const auto known = rows_->find(row.At(columns.record).integer);
    if (known == rows_->end()) return;
    gone.remove(known.key());
    SetKinds(*known, static_cast<quint8>((known->kinds & ~kOfFlags) | columns.KindsOf(row)));
  });
  qsizetype left = 0;
  for (const qint64 recordId : gone)
    left += rows_->remove(recordId);
  if (left > 0)
    Complete(std::move(troubles));
  else
    SetTroubles(std::move(troubles));
}

/// Sets the kinds that depend on other rows or on the troubles, and counts all kinds.
void RowKinds::Complete(Recordset troubles) {
  std::vector<int> sharing;
  for (const Row& row : std::as_const(*rows_)) {
    if (row.phone >= sharing.size()) sharing.resize(row.phone + 1U);
    ++sharing[row.phone];
  }
  counts_.fill(0);
  troubled_.clear();
  for (Row& row : *rows_) {
    const bool shared = row.phone != 0 && sharing[row.phone] > 1;
    const auto kinds =
        static_cast<quint8>((row.kinds & kOfFlags) | Bit(RowKind::kAll) | (shared ? Bit(RowKind::kSameMobile) : 0));
    row.kinds = 0;
    SetKinds(row, kinds);
  }
  SetTroubles(std::move(troubles));
}

void RowKinds::SetTroubles(Recordset troubles) {
  for (const qint64 recordId : std::exchange(troubled_, {}))
    if (const auto row = rows_->find(recordId); row != rows_->end())
      SetKinds(*row, static_cast<quint8>(row->kinds & ~kOfTroubles));
  for (; !troubles.Eof(); troubles.MoveNext()) {
    const auto row = rows_->find(troubles.Field(QStringLiteral("RecordID")).ToInt());
    if (row == rows_->end()) continue;
    troubled_.push_back(row.key());
    const bool inDoubt = troubles.Field(QStringLiteral("State")).ToInt() == kInDoubtState;
    SetKinds(*row, row->kinds | Bit(inDoubt ? RowKind::kInDoubt : RowKind::kFailed));
  }
}

/// Sets the kinds of a row, and updates the counts.
void RowKinds::SetKinds(Row& row, quint8 kinds) {
  for (unsigned changed = row.kinds ^ kinds; changed != 0; changed &= changed - 1) {
    const auto kind = static_cast<std::size_t>(std::countr_zero(changed));
    counts_[kind] += ((kinds >> kind) & 1U) != 0 ? 1 : -1;
  }
  row.kinds = kinds;
}

bool RowKinds::Is(qint64 recordId, RowKind kind) const {
  return (rows_->value(recordId).kinds & Bit(kind)) != 0;
}

std::function<bool(const StoredRow& row)> RowKinds::Filter(RowKind kind, const Recordset& rows) const {
  if (kind == RowKind::kAll) return {};
  const int record = rows.ColumnIndex(QStringLiteral("RecordID"));
  return [kinds = rows_, bit = Bit(kind), record](const StoredRow& row) {
    return (kinds->value(row.At(record).integer).kinds & bit) != 0;
  };
}

}  // namespace qbx
