// The messages that the next run of a campaign sends, one customer after the other.

#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

#include "database/statements.h"
#include "dispatch/message_maker.h"
#include "dispatch/send_journal.h"

namespace qbx {

/// What goes to one customer. What does not go is not there: no mobile number, sent already, or the customer said no.
struct NextMessage {
  qint64 recordId = 0;
  QString customer = {};
  QString mobile = {};  ///< as it is kept
  QString email = {};
  std::optional<QString> sms = {};  ///< byte for byte what goes out, as the subject and the body
  std::optional<QString> subject = {};
  std::optional<QString> body = {};
};

/// What the sample customer would get, of all three texts.
[[nodiscard]] NextMessage SampleMessage(MessageMaker& messages, QDate today);

/// A walk over the rows of a campaign in the order in which a run would send them now:
///
///   NextMessages walk(statements);
///   if (walk.Read(campaignId)) Show(walk.At(0, messages, today), walk.Count());
///
/// The rows are those of the moment of `Read`; what each says is read when it is shown.
class NextMessages {
 public:
  explicit NextMessages(Statements& statements) : statements_(statements) {}

  /// One pass over the rows that are flagged and not processed.
  /// \param only  the channel that matters: without it, rows of both
  /// \return false when they could not be read (already reported)
  [[nodiscard]] bool Read(int campaignId, std::optional<Channel> only = {});

  [[nodiscard]] int Count() const { return static_cast<int>(places_.size()); }
  /// \param place  from 0 to `Count` - 1
  [[nodiscard]] qint64 RecordAt(int place) const { return places_.at(static_cast<size_t>(place)).recordId; }

  /// \param place  from 0 to `Count` - 1
  /// \return nothing when the row is gone or could not be read
  [[nodiscard]] std::optional<NextMessage> At(int place, MessageMaker& messages, QDate today);

 private:
  struct Place {
    qint64 recordId;
    bool sms;
    bool email;
  };

  Statements& statements_;
  std::vector<Place> places_;
};

}  // namespace qbx
