// The requests of a client that has logged in: batches, procedure calls, transactions.

#pragma once

#include <QHash>

#include "tds_server/channel.h"
#include "tds_server/statements.h"

namespace qbx::tds {

/// Carries out the requests of one client. Prepared statements live as long as it.
class Requests {
 public:
  explicit Requests(ClientState& client) : client_(client) {}

  /// Writes the answer to a request, without the end of the message.
  /// \throws ProtocolError, RequestAbandoned
  void Carry(const Message& message, Answer& answer);

  /// The text of a request, in which a fault looks for its `match`: the statement or the procedure's name, followed by
  /// the text parameters.
  [[nodiscard]] static QString TextOf(const Message& message);

 private:
  struct ProcedureRequest {
    QString name;
    int number = 0;  ///< of a procedure called by number instead of name
    std::vector<SentParameter> parameters;
  };
  struct PreparedText {
    QStringList names;  ///< of its parameters
    QString sql;
  };

  static ProcedureRequest ReadProcedure(ByteReader& in);
  void Batch(ByteReader& in, Answer& answer);
  void Procedure(const ProcedureRequest& request, Answer& answer, bool more);
  void Transaction(ByteReader& in, Answer& answer);

  void RunText(const PreparedText& text, std::span<const SentParameter> values, Answer& answer);
  void PrepareAndRun(const ProcedureRequest& request, Answer& answer, bool run);
  bool Execute(const ProcedureRequest& request, Answer& answer);
  void CallNamed(const ProcedureRequest& request, Answer& answer, bool more);

  ClientState& client_;
  QHash<qint64, PreparedText> prepared_;
  qint64 handles_ = 0;
};

}  // namespace qbx::tds
