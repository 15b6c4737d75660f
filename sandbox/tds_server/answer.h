// The answer to a client: tokens that are sent in parts while they are written.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/value.h"
#include "tds_server/channel.h"
#include "tds_server/types.h"

namespace qbx::tds {

struct WireColumn {
  QString name;
  WireType type;
  bool isNullable = true;
};

/// What the end of a statement says, beside the statement.
struct Ending {
  bool more = false;  ///< something follows in this answer
  bool failed = false;
  std::optional<quint64> count = {};  ///< of rows
};

/// One message to a client. The written bytes are sent whenever there are 64 KB of them, and at the end.
class Answer {
 public:
  /// Which statement ends: one of a batch, one inside a procedure, or the procedure.
  enum class Statement : quint8 { kOfBatch = 0xFD, kOfProcedure = 0xFF, kProcedure = 0xFE };

  explicit Answer(Channel& channel) : channel_(channel) {}

  void LoginAccepted(quint32 version);
  void PacketSize(int bytes, int before);
  void Database(const QString& name, const QString& before);
  void LanguageAndCollation();
  void Features(const std::vector<quint8>& known);

  /// An error, or with a class of 10 and less a message.
  void Message(int number, int severity, const QString& text, const QString& procedure = {});
  void TransactionBegun(quint64 descriptor);
  void TransactionEnded(quint64 descriptor, bool committed);

  void Columns(const std::vector<WireColumn>& columns);
  /// \param cells  of the last announced columns
  void Row(const std::vector<WireColumn>& columns, const std::vector<Cell>& cells);
  void ValueRow(const std::vector<WireColumn>& columns, const std::vector<Value>& values);
  void ReturnStatus(int status);
  void ReturnValue(int ordinal, const QString& name, const Value& value);
  void End(Statement statement, const Ending& ending);
  void AttentionTaken();

  /// Sends the written bytes and ends the message.
  void Finish();
  /// Sends the written bytes and half of the last token. The message never ends.
  void BreakOff();

  void SetInTransaction(bool on) { inTransaction_ = on; }

 private:
  void SendWhenFull();

  Channel& channel_;
  ByteWriter out_;
  qsizetype lastToken_ = 0;
  bool inTransaction_ = false;
};

}  // namespace qbx::tds
