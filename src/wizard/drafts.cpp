#include "wizard/drafts.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>
#include <algorithm>
#include <array>

#include "platform/process_alive.h"
#include "platform/safe_file.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr char kEnding[] = ".JSON";

// Keys of the file.
constexpr char kUser[] = "user";
constexpr char kDatabase[] = "database";
constexpr char kComputer[] = "computer";
constexpr char kProcess[] = "process";
constexpr char kProcessStart[] = "process_start";
constexpr char kCampaign[] = "campaign";
constexpr char kName[] = "campaign_name";
constexpr char kWritten[] = "written";

struct TextKey {
  const char* key;
  QString CampaignTexts::*text;
};
constexpr std::array<TextKey, 4> kTexts = {{{"letter", &CampaignTexts::letter},
                                            {"email_subject", &CampaignTexts::emailSubject},
                                            {"email_body", &CampaignTexts::emailBody},
                                            {"sms", &CampaignTexts::sms}}};

Draft ReadDraft(const QString& file, const QJsonObject& object) {
  Draft draft{.file = file,
              .campaignId = object[QLatin1String(kCampaign)].toInt(),
              .campaignName = object[QLatin1String(kName)].toString(),
              .written = QDateTime::fromString(object[QLatin1String(kWritten)].toString(), Qt::ISODate),
              .texts = {}};
  for (const TextKey& each : kTexts)
    draft.texts.*each.text = object[QLatin1String(each.key)].toString();
  return draft;
}

bool IsWhole(const QJsonObject& object) {
  return object[QLatin1String(kCampaign)].isDouble() && object[QLatin1String(kProcess)].isDouble() &&
         std::all_of(kTexts.begin(), kTexts.end(),
                     [&object](const TextKey& each) { return object[QLatin1String(each.key)].isString(); });
}

}  // namespace

Drafts::Drafts(const StartupValues& startup, const HostInfo& host, const LogFile& log)
    : startup_(startup), host_(host), log_(log) {}

QString Drafts::User() const {
  // A user's name may hold any character; here a hyphen marks its end.
  return QLatin1String(QUrl::toPercentEncoding(startup_.user.toLower(), {}, "-"));
}

QString Drafts::Prefix() const {
  return QStringLiteral("MARKETING-DRAFT-%1-").arg(User());
}

QString Drafts::File(int campaignId) const {
  const qint64 process = host_.ProcessId();
  return QDir(startup_.ProgramFolder)
      .filePath(Prefix() + QStringLiteral("%1-%2-%3").arg(campaignId).arg(process).arg(host_.ProcessStart(process)) +
                QLatin1String(kEnding));
}

QString Drafts::OfferLock() const {
  return QDir(startup_.ProgramFolder).filePath(QStringLiteral("MARKETING-OFFER-%1.lock").arg(User()));
}

QByteArray Drafts::Bytes(const Draft& draft) const {
  const qint64 process = host_.ProcessId();
  QJsonObject object{{QLatin1String(kUser), startup_.user},
                     {QLatin1String(kDatabase), startup_.databaseName},
                     {QLatin1String(kComputer), host_.ComputerName()},
                     {QLatin1String(kProcess), process},
                     {QLatin1String(kProcessStart), host_.ProcessStart(process)},
                     {QLatin1String(kCampaign), draft.campaignId},
                     {QLatin1String(kName), draft.campaignName},
                     {QLatin1String(kWritten), draft.written.toString(Qt::ISODate)}};
  for (const TextKey& each : kTexts)
    object.insert(QLatin1String(each.key), draft.texts.*each.text);
  return QJsonDocument(object).toJson();
}

std::vector<Draft> Drafts::LeftBehind() const {
  std::vector<Draft> drafts;
  const QDir folder(startup_.ProgramFolder);
  for (const QString& name : folder.entryList(QDir::Files)) {
    if (!name.startsWith(Prefix()) || !name.endsWith(QLatin1String(kEnding))) continue;
    const QString file = folder.filePath(name);
    const std::optional<QByteArray> bytes = ReadWholeFile(file);
    if (!bytes) continue;  // another program has just removed it
    const QJsonObject object = QJsonDocument::fromJson(*bytes).object();
    if (!IsWhole(object)) {
      log_.WriteLog(QStringLiteral("The draft %1 is damaged. It was set aside.").arg(name));
      QFile::rename(file, file + QStringLiteral(".DAMAGED"));
      continue;
    }
    const bool own = EqualsNoCase(object[QLatin1String(kComputer)].toString(), host_.ComputerName()) &&
                     EqualsNoCase(object[QLatin1String(kDatabase)].toString(), startup_.databaseName);
    if (!own || RunsBeside(host_, object[QLatin1String(kProcess)].toInteger(),
                           object[QLatin1String(kProcessStart)].toInteger()))
      continue;
    drafts.push_back(ReadDraft(file, object));
  }
  std::stable_sort(drafts.begin(), drafts.end(),
                   [](const Draft& one, const Draft& other) { return one.written > other.written; });
  return drafts;
}

}  // namespace qbx
