#include "consent/sandbox_post.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace qbx::consent {
namespace {

constexpr Channel kChannels[] = {Channel::kSms, Channel::kEmail};

size_t Place(Channel channel) {
  return channel == Channel::kSms ? 0 : 1;
}

QString Detail(const QJsonObject& record) {
  return record.value(QStringLiteral("detail")).toString();
}

bool Accepted(const QJsonObject& record) {
  return record.value(QStringLiteral("outcome")) == QLatin1String("accepted");
}

/// What the program can know about a message. The sandbox's --help says what it does.
Outcome OutcomeOf(const QJsonObject& record) {
  static const QStringList kNobodyKnows = {QStringLiteral("http 500"),  QStringLiteral("http 502"),
                                           QStringLiteral("http 504"),  QStringLiteral("html"),
                                           QStringLiteral("page"),      QStringLiteral("broken off"),
                                           QStringLiteral("no answer"), QStringLiteral("dropdata")};
  if (kNobodyKnows.contains(Detail(record))) return Outcome::kUncertain;
  return Accepted(record) ? Outcome::kAccepted : Outcome::kRefused;
}

bool Arrived(const QJsonObject& record) {
  return Accepted(record) || Detail(record) == QLatin1String("dropdata");
}

QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

SandboxPost::SandboxPost(const test::SandboxProcess& sandbox) : sandbox_(sandbox) {
  for (const Channel channel : kChannels)
    told_[Place(channel)] = Read(channel).size();
}

void SandboxPost::SteerSome(const std::vector<Row>& rows, RandomSource& random, int percent) const {
  static constexpr const char* kNumbers[] = {"code 33",  "code 2",    "http 500", "http 502",    "http 503",
                                             "http 404", "html",      "page",     "broken off",  "no answer",
                                             "redirect", "one field", "status 0", "three fields"};
  static constexpr const char* kMailboxes[] = {"550 No such user", "451 Later, please", "data 554 Refused", "drop",
                                               "dropdata"};
  QJsonObject numbers;
  QJsonObject recipients;
  for (const Row& row : rows) {
    const std::optional<QString> number = NumberOf(row.mobile);
    if (number && random.Chance(percent)) numbers[*number] = QLatin1String(random.Pick(kNumbers));
    for (const QString& address : AddressesOf(row.email))
      if (random.Chance(percent)) recipients[address] = QLatin1String(random.Pick(kMailboxes));
  }
  const QJsonObject wishes{{QStringLiteral("numbers"), numbers}, {QStringLiteral("recipients"), recipients}};
  sandbox_.Steer("{}");
  sandbox_.Steer(QJsonDocument(wishes).toJson(QJsonDocument::Compact));
}

std::vector<QJsonObject> SandboxPost::Read(Channel channel) const {
  const QString name = channel == Channel::kSms ? QStringLiteral("/texts.jsonl") : QStringLiteral("/mails.jsonl");
  std::vector<QJsonObject> records;
  for (const QByteArray& line : FileBytes(sandbox_.Folder() + name).split('\n'))
    if (!line.isEmpty()) records.push_back(QJsonDocument::fromJson(line).object());
  return records;
}

int SandboxPost::Count() const {
  return static_cast<int>(Read(Channel::kSms).size() + Read(Channel::kEmail).size());
}

void SandboxPost::Mark() {
  mark_ = {Read(Channel::kSms).size(), Read(Channel::kEmail).size()};
}

Delivery SandboxPost::ToDelivery(const QJsonObject& record, Channel channel) const {
  if (channel == Channel::kSms) {
    return {.channel = channel,
            .to = {record.value(QStringLiteral("to")).toString()},
            .subject = {},
            .text = record.value(QStringLiteral("message")).toString()};
  }
  QStringList to;
  for (const auto& address : record.value(QStringLiteral("to")).toArray())
    to += address.toString();
  return ReadMail(to, FileBytes(sandbox_.Folder() + u'/' + record.value(QStringLiteral("file")).toString()));
}

void SandboxPost::Tell(Ledger& ledger, const QHash<qint64, std::array<Announcement, 2>>& before) {
  for (const Channel channel : kChannels) {
    const size_t place = Place(channel);
    const std::vector<QJsonObject> records = Read(channel);
    for (size_t& i = told_[place]; i < records.size(); ++i) {
      const QJsonObject& record = records[i];
      const bool body = channel == Channel::kSms || !record.value(QStringLiteral("file")).toString().isEmpty();
      if (!body) {  // refused before the message itself was sent
        ledger.Refused(record.value(QStringLiteral("to")).toArray().at(0).toString());
        continue;
      }
      const Delivery delivery = ToDelivery(record, channel);
      Row* row = ledger.Whose(delivery);
      if (row != nullptr) {
        ledger.Announces(row->record);
        // Messages before the mark were announced before it, and so was the next one, which was on its way.
        if (mark_ && i <= (*mark_)[place]) row->announced = before.value(row->record);
      }
      ledger.Received(delivery, OutcomeOf(record), Arrived(record));
    }
  }
  mark_.reset();
}

}  // namespace qbx::consent
