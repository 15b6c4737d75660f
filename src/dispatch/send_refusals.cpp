#include "dispatch/send_refusals.h"

namespace qbx {

namespace {

QString RefusedChannelText(Channel channel) {
  switch (channel) {
    case Channel::kSms:
      return QStringLiteral("The customer no longer agrees to texts.");
    case Channel::kEmail:
      return QStringLiteral("The customer no longer agrees to e-mails.");
    case Channel::kLetter:
      return QStringLiteral("The customer no longer agrees to letters.");
  }
  return {};
}

}  // namespace

QString RefusalText(Refusal refusal, Channel channel) {
  switch (refusal) {
    case Refusal::kCustomerGone:
      return QStringLiteral("The customer is no longer in the database.");
    case Refusal::kOptedOut:
      return QStringLiteral("The customer has opted out since the results were selected.");
    case Refusal::kNotOptedIn:
      return QStringLiteral("The customer has not opted in.");
    case Refusal::kNoMarketing:
      return QStringLiteral("The customer was set to \"No Marketing\" since the results were selected.");
    case Refusal::kChannel:
      return RefusedChannelText(channel);
    case Refusal::kNone:
      break;
  }
  return {};
}

SendRefusals::SendRefusals(Connection& connection)
    : row_(connection, "proc_selp_Send_Refusal"), campaign_(connection, "proc_selp_Send_Refusals") {}

QHash<qint64, RowRefusals> SendRefusals::Refusals(Recordset rows) {
  QHash<qint64, RowRefusals> refusals;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    const auto refusal = [&rows](const char* column) {
      return static_cast<Refusal>(rows.Field(QString::fromLatin1(column)).ToInt());
    };
    refusals.insert(rows.Field(QStringLiteral("RecordID")).ToInt(),
                    {refusal("SMS_Refusal"), refusal("Email_Refusal"), refusal("Letter_Refusal")});
  }
  return refusals;
}

std::optional<RowRefusals> SendRefusals::OfRow(qint64 recordId) {
  const QHash<qint64, RowRefusals> refusals = Refusals(row_.Open({{"@RecordID", recordId}}));
  return refusals.isEmpty() ? std::nullopt : std::optional(refusals.value(recordId));
}

QHash<qint64, RowRefusals> SendRefusals::OfCampaign(int campaignId) {
  return Refusals(campaign_.Open({{"@CampaignID", campaignId}}));
}

}  // namespace qbx
