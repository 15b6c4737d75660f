// The messages that the next run of a campaign sends, customer by customer.

#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

#include "database/statements.h"
#include "dispatch/message_maker.h"
#include "dispatch/send_journal.h"

namespace qbx {

/// The messages to one customer. A message that is not sent is missing here: there is no mobile number, it was sent
/// already, or the customer said no.
struct NextMessage {
  qint64 recordId = 0;
  QString customer = {};
  QString mobile = {};  ///< unchanged
  QString email = {};
  std::optional<QString> sms = {};  ///< exactly as it goes out, and so are subject and body
  std::optional<QString> subject = {};
  std::optional<QString> body = {};
};

/// What the sample customer would get, made from all three templates.
[[nodiscard]] NextMessage SampleMessage(MessageMaker& messages, QDate today);

/// Walks over the rows of a campaign in the order in which a run would send them now:
///
///   NextMessages walk(statements);
///   if (walk.Read(campaignId)) Show(walk.At(0, messages, today), walk.Count());
///
/// The list of rows is as of `Read`; the content of a row is read when it is shown.
class NextMessages {
 public:
  explicit NextMessages(Statements& statements) : statements_(statements) {}

  /// Reads the rows that are flagged and not processed, in one pass.
  /// \param only  the channel to look at; both when it is missing
  /// \return false when they could not be read (already reported)
  [[nodiscard]] bool Read(int campaignId, std::optional<Channel> only = {});

  [[nodiscard]] int Count() const { return static_cast<int>(places_.size()); }
  /// \param place  from 0 to `Count` - 1
  [[nodiscard]] qint64 RecordAt(int place) const { return places_.at(static_cast<size_t>(place)).recordId; }

  /// \param place  from 0 to `Count` - 1
  /// \return nothing when the row was deleted or could not be read
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
