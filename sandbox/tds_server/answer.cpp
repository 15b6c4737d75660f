#include "tds_server/answer.h"

#include <algorithm>

namespace qbx::tds {
namespace {

constexpr qsizetype kFull = 64 * 1024;
constexpr int kLastMessageSeverity = 10;
constexpr quint8 kUtf8Feature = 0x0A;

enum AnswerToken {
  kReturnStatusToken = 0x79,
  kColumnsToken = 0x81,
  kErrorToken = 0xAA,
  kInfoToken = 0xAB,
  kReturnValueToken = 0xAC,
  kLoginAcceptedToken = 0xAD,
  kFeaturesToken = 0xAE,
  kRowToken = 0xD1,
  kRowWithNullsToken = 0xD2,
  kChangeToken = 0xE3,
};

enum Change {
  kDatabaseChange = 1,
  kLanguageChange = 2,
  kPacketSizeChange = 4,
  kCollationChange = 7,
  kBegunChange = 8,
  kCommittedChange = 9,
  kRolledBackChange = 10
};

enum EndFlag {
  kMoreFlag = 0x01,
  kFailedFlag = 0x02,
  kInTransactionFlag = 0x04,
  kCountedFlag = 0x10,
  kAttentionFlag = 0x20
};

const QString kServerName = QStringLiteral("SANDBOX");

void WriteChange(ByteWriter& out, Change what, const QString& now, const QString& before) {
  out.U8(kChangeToken).Sized([&](ByteWriter& change) { change.U8(what).ShortText(now).ShortText(before); });
}

void WriteDescriptor(ByteWriter& out, Change what, quint64 now, quint64 before) {
  out.U8(kChangeToken).Sized([&](ByteWriter& change) {
    change.U8(what);
    for (const quint64 descriptor : {now, before}) {
      change.U8(descriptor != 0 ? 8 : 0);
      if (descriptor != 0) change.U64(descriptor);
    }
  });
}

bool IsNull(const Cell& cell) {
  return cell.type == ValueType::kNull;
}

}  // namespace

void Answer::LoginAccepted(quint32 version) {
  // By the program's name, a client knows which dialect of the protocol follows.
  out_.U8(kLoginAcceptedToken).Sized([&](ByteWriter& token) {
    token.U8(1).BigEndian(version, 4).ShortText(QStringLiteral("Microsoft SQL Server")).U8(11).U8(0).BigEndian(3000, 2);
  });
}

void Answer::PacketSize(int bytes, int before) {
  WriteChange(out_, kPacketSizeChange, QString::number(bytes), QString::number(before));
}

void Answer::Database(const QString& name, const QString& before) {
  constexpr int kDatabaseChanged = 5701;
  WriteChange(out_, kDatabaseChange, name, before);
  Message(kDatabaseChanged, kLastMessageSeverity, QStringLiteral("Changed database context to '%1'.").arg(name));
}

void Answer::LanguageAndCollation() {
  constexpr int kLanguageChanged = 5703;
  const QString language = QStringLiteral("us_english");
  out_.U8(kChangeToken).Sized([](ByteWriter& change) {
    change.U8(kCollationChange).U8(5).U32(0x00D00409).U8(52).U8(0);
  });
  WriteChange(out_, kLanguageChange, language, {});
  Message(kLanguageChanged, kLastMessageSeverity, QStringLiteral("Changed language setting to %1.").arg(language));
}

void Answer::Features(const std::vector<quint8>& known) {
  if (known.empty()) return;
  out_.U8(kFeaturesToken);
  if (std::ranges::find(known, kUtf8Feature) != known.end()) out_.U8(kUtf8Feature).U32(1).U8(1);
  out_.U8(0xFF);
}

void Answer::Message(int number, int severity, const QString& text, const QString& procedure) {
  out_.U8(severity > kLastMessageSeverity ? kErrorToken : kInfoToken).Sized([&](ByteWriter& token) {
    token.I32(number).U8(1).U8(static_cast<unsigned>(severity)).LongerText(text);
    token.ShortText(kServerName).ShortText(procedure).U32(1);
  });
}

void Answer::TransactionBegun(quint64 descriptor) {
  WriteDescriptor(out_, kBegunChange, descriptor, 0);
}

void Answer::TransactionEnded(quint64 descriptor, bool committed) {
  WriteDescriptor(out_, committed ? kCommittedChange : kRolledBackChange, 0, descriptor);
}

void Answer::Columns(const std::vector<WireColumn>& columns) {
  constexpr unsigned kNullable = 0x01;
  constexpr unsigned kMayBeUpdated = 0x08;
  out_.U8(kColumnsToken).U16(static_cast<unsigned>(columns.size()));
  for (const WireColumn& column : columns) {
    out_.U32(0).U16(kMayBeUpdated | (column.isNullable ? kNullable : 0));
    WriteType(out_, column.type);
    // A column of long text names its table.
    if (column.type.id == TypeId::kNText || column.type.id == TypeId::kText) out_.U8(1).LongerText(QStringLiteral("t"));
    out_.ShortText(column.name);
  }
}

void Answer::Row(const std::vector<WireColumn>& columns, const std::vector<Cell>& cells) {
  SendWhenFull();
  lastToken_ = out_.Size();
  const bool hasNulls = std::ranges::any_of(cells, IsNull);
  out_.U8(hasNulls ? kRowWithNullsToken : kRowToken);
  if (hasNulls) {
    for (std::size_t first = 0; first < cells.size(); first += 8) {
      unsigned bits = 0;
      for (std::size_t i = first; i < std::min(first + 8, cells.size()); ++i)
        bits |= (IsNull(cells[i]) ? 1U : 0U) << (i - first);
      out_.U8(bits);
    }
  }
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (!IsNull(cells[i])) WriteValue(out_, columns[i].type, cells[i]);
  }
}

void Answer::ReturnStatus(int status) {
  out_.U8(kReturnStatusToken).I32(status);
}

void Answer::ReturnValue(int ordinal, const QString& name, const Value& value) {
  const WireType type = value.Type() == ValueType::kInt ? WireType{TypeId::kIntN, 4} : TypeOfValue(value.Type());
  out_.U8(kReturnValueToken).U16(static_cast<unsigned>(ordinal)).ShortText(name).U8(1).U32(0).U16(0);
  WriteType(out_, type);
  QByteArray text;
  WriteValue(out_, type, CellOf(value, text));
}

void Answer::ValueRow(const std::vector<WireColumn>& columns, const std::vector<Value>& values) {
  std::vector<QByteArray> texts(values.size());
  std::vector<Cell> cells;
  for (std::size_t i = 0; i < values.size(); ++i)
    cells.push_back(CellOf(values[i], texts[i]));
  Row(columns, cells);
}

void Answer::End(Statement statement, const Ending& ending) {
  unsigned flags = 0;
  if (ending.more) flags |= kMoreFlag;
  if (ending.failed) flags |= kFailedFlag;
  if (ending.count) flags |= kCountedFlag;
  if (inTransaction_) flags |= kInTransactionFlag;
  out_.U8(static_cast<unsigned>(statement)).U16(flags).U16(0).U64(ending.count.value_or(0));
}

void Answer::AttentionTaken() {
  out_.U8(static_cast<unsigned>(Statement::kOfBatch)).U16(kAttentionFlag).U16(0).U64(0);
}

void Answer::SendWhenFull() {
  if (out_.Size() < kFull) return;
  (void)out_.Take(channel_.Send(MessageType::kAnswer, out_.Data(), SendPart::kFullPackets));
}

void Answer::Finish() {
  channel_.Send(MessageType::kAnswer, out_.Data(), SendPart::kEnd);
  out_ = {};
}

void Answer::BreakOff() {
  const QByteArray kept = out_.Take(lastToken_ + (out_.Size() - lastToken_) / 2);
  channel_.Send(MessageType::kAnswer, kept, SendPart::kAll);
}

}  // namespace qbx::tds
