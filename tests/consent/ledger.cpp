#include "consent/ledger.h"

#include <algorithm>
#include <set>

namespace qbx::consent {
namespace {

constexpr int kLongestText = 918;

QString WithOneBreak(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

QString Unbroken(QString text) {
  text = WithOneBreak(text);
  while (text.endsWith(QLatin1Char('\n')))
    text.chop(1);
  return text;
}

}  // namespace

bool NamesCustomer(const QStringList& log, int customer) {
  const QString number = QString::number(customer);
  return std::any_of(log.begin(), log.end(), [&](const QString& line) {
    const qsizetype at = line.indexOf(number, line.indexOf(QStringLiteral(" - ")));
    return at > 0 && !line[at - 1].isDigit() &&
           (at + number.size() == line.size() || !line[at + number.size()].isDigit());
  });
}

void Ledger::Take(std::vector<Row> selected) {
  rows = std::move(selected);
  byRecord_.clear();
  byTag_.clear();
  for (size_t i = 0; i < rows.size(); ++i) {
    byRecord_[rows[i].record] = i;
    byTag_[rows[i].values.lastname + u'/' + rows[i].vehicle] = i;
  }
}

Row* Ledger::Find(qint64 record) {
  const auto found = byRecord_.constFind(record);
  return found == byRecord_.cend() ? nullptr : &rows[*found];
}

/// Every template begins with "{lastname}/{regno}:", which no two rows share.
Row* Ledger::Whose(const Delivery& delivery) {
  const QString& text = delivery.channel == Channel::kSms ? delivery.text : delivery.subject;
  return WithTag(text.section(QLatin1Char(':'), 0, 0));
}

Row* Ledger::WithTag(const QString& tag) {
  const auto found = byTag_.constFind(tag);
  return found == byTag_.cend() ? nullptr : &rows[*found];
}

void Ledger::Fault(const Row& row, Channel channel, const QString& what) {
  story_.Fault(QStringLiteral("the %1 of %2 %3").arg(NameOf(channel), row.Name(), what));
}

void Ledger::RunBegins() {
  repeating_ = false;
  for (Row& row : rows) {
    row.due = !row.gone && !row.processed && (row.sms.wanted || row.mail.wanted);
    row.disturbed = false;
    for (Half* half : {&row.sms, &row.mail})
      half->attempted = false;
  }
  mustAsk_ = !HalfDelivered(true).empty();
  asked_ = false;
}

void Ledger::RowStarts(qint64 record) {
  since_ = clock_.Today();
  Row* row = Find(record);
  if (!repeating_ || row == nullptr || !row->due) return;
  for (Half* half : {&row->sms, &row->mail})
    half->permit = half->permit || half->arrived > 0;
}

void Ledger::Announces(qint64 record) {
  if (Row* row = Find(record)) row->announced = std::array{Look(*row, Channel::kSms), Look(*row, Channel::kEmail)};
}

Announcement Ledger::Look(const Row& row, Channel channel) const {
  return {AskAgain(row, channel, world_), !row.gone && !row.processed && row.Of(channel).wanted};
}

void Ledger::Received(const Delivery& delivery, Outcome outcome, bool arrived) {
  story_.Tell(QStringLiteral("    %1 to %2 %3, %4: %5")
                  .arg(NameOf(delivery.channel), delivery.to.join(u'+'),
                       arrived ? QStringLiteral("arrived") : QStringLiteral("did not arrive"),
                       outcome == Outcome::kAccepted  ? QStringLiteral("accepted")
                       : outcome == Outcome::kRefused ? QStringLiteral("refused")
                                                      : QStringLiteral("nobody knows"),
                       (delivery.channel == Channel::kSms ? delivery.text : delivery.subject).left(40)));
  Row* row = Whose(delivery);
  if (row == nullptr) return story_.Fault(QStringLiteral("a message that belongs to no row: ") + delivery.text);
  Half& half = row->Of(delivery.channel);
  half.attempted = true;
  half.refused = outcome == Outcome::kRefused;
  half.delivered = outcome == Outcome::kAccepted;
  if (outcome == Outcome::kUncertain) half.mayDoubt = row->doubt = true;
  CheckAnnounced(*row, delivery.channel);
  CheckContent(*row, delivery);
  if (half.arrived > 0 && !half.permit) Fault(*row, delivery.channel, QStringLiteral("went out TWICE"));
  if (!arrived) return;
  half.permit = false;
  ++half.arrived;
  ++arrived_;
}

void Ledger::Refused(const QString& address) {
  story_.Tell(QStringLiteral("    e-mail to %1: refused").arg(address));
  for (Row& row : rows) {
    if (!row.due || row.mail.delivered || !AddressesOf(row.email).contains(address)) continue;
    row.mail.attempted = row.mail.refused = true;
  }
}

void Ledger::CheckAnnounced(Row& row, Channel channel) {
  if (!row.announced) Fault(row, channel, QStringLiteral("went out without having been announced"));
  const Announcement then = row.announced ? (*row.announced)[channel == Channel::kSms ? 0 : 1] : Look(row, channel);
  row.announced.reset();
  if (!then.wanted) Fault(row, channel, QStringLiteral("went out, and was not asked for"));
  if (then.verdict == Verdict::kMustNot)
    Fault(row, channel, QStringLiteral("went to somebody who MAY NOT BE CONTACTED any more"));
}

void Ledger::CheckContent(const Row& row, const Delivery& delivery) {
  const auto compare = [&](const QString& got, const auto& wanted, const QString& what) {
    if (HoldsField(got)) Fault(row, delivery.channel, what + QStringLiteral(" has an UNMERGED field: ") + got);
    // Midnight may have passed while the message was on its way.
    const QString now = wanted(clock_.Today());
    if (got == now || got == wanted(since_)) return;
    // Servers may change the line ends of an e-mail on its way.
    const bool mail = delivery.channel == Channel::kEmail;
    if (mail && (Unbroken(got) == Unbroken(now) || Unbroken(got) == Unbroken(wanted(since_)))) return;
    Fault(row, delivery.channel,
          what + QStringLiteral(" is wrong: \"") + got + QStringLiteral("\", not \"") + now + u'"');
  };
  QStringList to;
  if (delivery.channel == Channel::kSms) {
    if (const std::optional<QString> number = NumberOf(row.mobile)) to += *number;
    const auto text = [&](const QDate& day) {
      return WithoutBlanksAround(WithOneBreak(Merged(templates.sms, row.values, day))
                                     .replace(u'\n', QLatin1String("\r\n"))
                                     .left(kLongestText));
    };
    compare(delivery.text, text, QStringLiteral("text"));
  } else {
    to = AddressesOf(row.email);
    const auto subject = [&](const QDate& day) {
      return Merged(templates.emailSubject, row.values, day).replace(u'\r', u' ').replace(u'\n', u' ');
    };
    compare(delivery.subject, subject, QStringLiteral("subject"));
    const auto body = [&](const QDate& day) { return Merged(templates.emailBody, row.values, day); };
    compare(delivery.text, body, QStringLiteral("body"));
  }
  if (delivery.to != to)
    Fault(row, delivery.channel, QStringLiteral("went to %1, not to %2").arg(delivery.to.join(u'+'), to.join(u'+')));
  since_ = clock_.Today();
}

std::set<int> Ledger::HalfDelivered(bool otherFailed) const {
  std::set<int> customers;
  for (const Row& row : rows) {
    if (!row.due || !row.sms.wanted || !row.mail.wanted) continue;
    const bool leftAlone = row.doubt || AskAgain(row, Channel::kSms, world_) == Verdict::kMustNot ||
                           AskAgain(row, Channel::kEmail, world_) == Verdict::kMustNot;
    if (otherFailed && leftAlone) continue;
    const auto half = [&](const Half& one, const Half& other) {
      return one.delivered && (other.refused || !otherFailed);
    };
    if (half(row.sms, row.mail) || half(row.mail, row.sms)) customers.insert(row.customer);
  }
  return customers;
}

void Ledger::AskedToRepeat(int customers, bool yes) {
  asked_ = true;
  repeating_ = yes;
  const auto atLeast = static_cast<int>(HalfDelivered(true).size());
  const auto atMost = static_cast<int>(HalfDelivered(false).size());
  if (customers >= 1 && customers >= atLeast && customers <= atMost) return;
  story_.Fault(QStringLiteral("the question names %1 customers who already got half; there are %2 to %3")
                   .arg(customers)
                   .arg(atLeast)
                   .arg(atMost));
}

void Ledger::MayBeInDoubt(qint64 record) {
  Row* row = Find(record);
  if (row == nullptr) return;
  row->sms.mayDoubt = row->mail.mayDoubt = row->doubt = true;
}

void Ledger::Settled(const StoredRow& before, const StoredRow& now, bool arrived) {
  Row& row = *Find(before.record);
  for (const Channel channel : {Channel::kSms, Channel::kEmail}) {
    if (before.journal.Of(channel) != JournalState::kSending) continue;
    row.Of(channel).delivered = arrived;
    row.Of(channel).refused = false;
  }
  row.doubt = now.journal.InDoubt();
  if (row.doubt) story_.Fault(row.Name() + QStringLiteral(" is still in doubt"));
  CheckMark(row, now);
}

void Ledger::RunEnds(const RunReport& report, const std::vector<StoredRow>& stored) {
  if (report.finished && mustAsk_ && !asked_)
    story_.Fault(QStringLiteral("customers got half, and nobody was asked whether they get it again"));
  std::set<qint64> left;
  for (const StoredRow& now : stored) {
    left.insert(now.record);
    Row* row = Find(now.record);
    if (row == nullptr) {
      story_.Fault(QStringLiteral("row %1 is new").arg(now.record));
      continue;
    }
    if (now.sms != row->sms.wanted || now.mail != row->mail.wanted || now.letter != row->letter)
      story_.Fault(row->Name() + QStringLiteral(": its flags were changed"));
    row->doubt = now.journal.InDoubt();
    CheckDoubt(*row, now);
    CheckMark(*row, now);
    if (!report.finished || !row->due || row->disturbed) continue;
    if (row->sms.wanted && !report.textsSkipped) CheckDone(*row, now, Channel::kSms, report);
    if (row->mail.wanted) CheckDone(*row, now, Channel::kEmail, report);
  }
  for (const Row& row : rows)
    if (!row.gone && !left.contains(row.record)) story_.Fault(row.Name() + QStringLiteral(" has gone"));
}

void Ledger::CheckDoubt(const Row& row, const StoredRow& stored) {
  for (const Channel channel : {Channel::kSms, Channel::kEmail}) {
    const JournalState state = channel == Channel::kSms ? stored.journal.sms : stored.journal.email;
    if (state == JournalState::kSending && !row.Of(channel).mayDoubt)
      Fault(row, channel, QStringLiteral("is in doubt without a cause"));
    if (state == JournalState::kSent && !row.Of(channel).delivered && !row.processed && !stored.processed)
      Fault(row, channel, QStringLiteral("is noted as sent, and was not"));
  }
}

/// Checks that a row that a run marked has no message left to send.
void Ledger::CheckMark(Row& row, const StoredRow& stored) {
  if (stored.processed && !row.processed) {
    const bool noNumber = row.mobile.size() < kShortestMobileToSend && row.mail.wanted;
    if (row.sms.wanted && !row.sms.delivered && !noNumber)
      Fault(row, Channel::kSms, QStringLiteral("counts as sent, and was not"));
    if (row.mail.wanted && !row.mail.delivered)
      Fault(row, Channel::kEmail, QStringLiteral("counts as sent, and was not"));
  }
  if (!stored.processed && row.processed) story_.Fault(row.Name() + QStringLiteral(" lost its mark"));
  row.processed = stored.processed;
}

void Ledger::CheckDone(const Row& row, const StoredRow& stored, Channel channel, const RunReport& report) {
  const Half& half = row.Of(channel);
  const JournalEntry& journal = stored.journal;
  const bool doubt = (row.sms.wanted && journal.sms == JournalState::kSending) ||
                     (row.mail.wanted && journal.email == JournalState::kSending);
  if (doubt || half.delivered) return;
  const bool named = NamesCustomer(report.log, row.customer);
  if (half.attempted) {
    if (half.refused && !named) Fault(row, channel, QStringLiteral("failed without a line in the results log"));
    return;
  }
  // The typed text is no number. The program then sends nothing and gives no reason.
  if (channel == Channel::kSms && (row.mobile.size() < kShortestMobileToSend || !NumberOf(row.mobile))) return;
  // The sandbox keeps no record of an address without a name.
  const QStringList addresses = AddressesOf(row.email);
  const bool noAddress = channel == Channel::kEmail && (addresses.isEmpty() || addresses.first().startsWith(u'@'));
  if (!noAddress && AskAgain(row, channel, world_) == Verdict::kMust)
    return Fault(row, channel, QStringLiteral("was due and is LOST: not sent, not failed, not in doubt"));
  if (!named) Fault(row, channel, QStringLiteral("was left out without a line in the results log"));
}

}  // namespace qbx::consent
