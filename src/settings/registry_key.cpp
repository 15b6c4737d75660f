#include "settings/registry_key.h"

#include "diagnostics/message_catalogue.h"
#include "util/text.h"

namespace qbx {
namespace {

constexpr char kSource[] = "cRegistry.cls";
constexpr int kLocationOpen = 4823;
constexpr int kLocationCount = 4825;
constexpr int kMessageCouldNotSet = 4;
constexpr int kMessageCouldNotWrite = 5;

QString ParentOf(const QString& path) {
  return path.section(QLatin1Char('\\'), 0, -2);
}

}  // namespace

CRegistry::CRegistry(RegistryServices services) : services_(services) {}

QString CRegistry::Default() {
  return GetValue(QString());
}

bool CRegistry::SetDefault(const QString& data) {
  return SetValue(QString(), data);
}

void CRegistry::SetValueCount(int) {
  services_.diagnostics.errors.ShowError(kLocationCount, QStringLiteral("CRegistry.Let ValueCount"),
                                         QStringLiteral("The Let Property is not available"));
}

QString CRegistry::GetName(int position) const {
  return position >= 0 && position < ValueCount() ? values_[static_cast<size_t>(position)].name : QString();
}

QString CRegistry::GetSubKey(int position) const {
  return subKeys_.value(position);
}

RegistryType CRegistry::GetType(const QString& name) {
  const RegistryValue* value = Refresh() ? Find(name) : nullptr;
  return value != nullptr ? value->type : RegistryType::kText;
}

RegistryType CRegistry::GetType(int position) const {
  return position >= 0 && position < ValueCount() ? values_[static_cast<size_t>(position)].type : RegistryType::kText;
}

QString CRegistry::GetValue(const QString& name) {
  const RegistryValue* value = Refresh() ? Find(name) : nullptr;
  return value != nullptr ? value->data : QString();
}

QString CRegistry::GetValue(int position) const {
  return position >= 0 && position < ValueCount() ? values_[static_cast<size_t>(position)].data : QString();
}

const RegistryValue* CRegistry::Find(const QString& name) const {
  const auto found =
      std::ranges::find_if(values_, [&](const RegistryValue& value) { return EqualsNoCase(value.name, name); });
  return found != values_.end() ? &*found : nullptr;
}

QString CRegistry::Path() const {
  QString path = key;
  while (path.endsWith(QLatin1Char('\\')))
    path.chop(1);
  return path;
}

bool CRegistry::Refresh() {
  return GetKeyInfo();
}

bool CRegistry::GetKeyInfo() {
  values_.clear();
  subKeys_.clear();
  const QString path = Path();
  if (const QString failure = OpenKey(); !failure.isEmpty()) {
    ReportOpenFailure(failure);
    return false;
  }
  QString error;
  auto values = (AccessType & kKeyQueryValue) != 0 ? services_.store.Values(root, path, &error) : std::nullopt;
  if (!values) {
    if (error.isEmpty()) error = QStringLiteral("5");  // the platform's number for "access denied"
    services_.diagnostics.log.WriteLog(QStringLiteral("Error on Registry Query of Key: ") + path +
                                       QStringLiteral(",  Err: ") + error);
    services_.failures.reported = true;
    return false;
  }
  values_ = std::move(*values);
  subKeys_ = services_.store.SubKeys(root, path);
  return true;
}

bool CRegistry::IsMissing() const {
  return !services_.store.KeyExists(root, Path()) && HiveError().isEmpty();
}

// A hive that cannot be read has no keys; only reading the values tells this from a missing key.
QString CRegistry::HiveError() const {
  QString error;
  (void)services_.store.Values(root, Path(), &error);
  return error;
}

QString CRegistry::OpenKey() {
  const QString path = Path();
  if (services_.store.KeyExists(root, path)) return {};
  if (QString error = HiveError(); !error.isEmpty()) return error;
  if (!AutoCreate) return QStringLiteral("The key does not exist");
  return Create() ? QString() : QStringLiteral("Unable to create Registry Key");
}

void CRegistry::ReportOpenFailure(const QString& failure) {
  LogDebugQueryValue();
  services_.diagnostics.log.WriteLog(QStringLiteral("Error on Key: ") + Path());
  if (services_.failures.reported || bNoErrors) return;
  services_.failures.reported = true;
  services_.diagnostics.errors.ShowError(kLocationOpen, QString::fromLatin1(kSource), failure);
}

bool CRegistry::Create() {
  const QStringList parts = Path().split(QLatin1Char('\\'), Qt::SkipEmptyParts);
  QString path;
  for (const QString& part : parts) {
    path += path.isEmpty() ? part : QLatin1Char('\\') + part;
    if (services_.store.KeyExists(root, path)) continue;
    if (const QString failure = CreateEx(path); !failure.isEmpty()) {
      ReportCreateFailure(path, failure);
      return false;
    }
  }
  return !parts.isEmpty();
}

QString CRegistry::CreateEx(const QString& path) {
  const QString parent = ParentOf(path);
  if (!parent.isEmpty() && !services_.store.KeyExists(root, parent)) return QStringLiteral("Cannot Open Parent Key");
  const QString failure = services_.store.CreateKey(root, path);
  return failure.isEmpty() ? failure : QStringLiteral("Unknown Error: ") + failure;
}

void CRegistry::ReportCreateFailure(const QString& path, const QString& failure) {
  const LogFile& log = services_.diagnostics.log;
  log.WriteLog(QStringLiteral("Error on Create Registry Key: ") + path + QStringLiteral(",  Err: ") + failure);
  services_.failures.reported = true;
  log.WriteLog(
      services_.diagnostics.ui.ApplicationTitle() +
      QStringLiteral(
          " encountered an error while try to store program settings in the Windows Registry. The currently logged in user may not have sufficient Windows permissions") +
      QStringLiteral("Error at 4824 Creating Key:") + path + QStringLiteral(", Err: ") + failure);
  LogDebugQueryValue();
}

void CRegistry::LogDebugQueryValue() {
  if (DebugQueryValue.isEmpty()) return;
  services_.diagnostics.log.WriteLog(QStringLiteral("Registry - DebugQueryValue: ") + DebugQueryValue);
}

bool CRegistry::SetValue(const QString& name, const QString& data, RegistryType type) {
  // A failure to make the key counts as reported, so whether to tell the user is decided first.
  const bool tell = !bNoErrors && !services_.failures.reported;
  if (const QString failure = OpenKey(); !failure.isEmpty()) {
    LogDebugQueryValue();
    return SetFailed(kMessageCouldNotSet, failure, tell);
  }
  const QString failure = services_.store.SetValue(root, Path(), {name, type, data});
  return failure.isEmpty() || SetFailed(kMessageCouldNotWrite, failure, tell);
}

bool CRegistry::SetFailed(int messageNumber, const QString& failure, bool tell) {
  const QString message = AppMessage(messageNumber);
  services_.diagnostics.log.WriteLog(message + QStringLiteral(" Key: ") + Path() + QStringLiteral(", Err: ") + failure);
  services_.failures.reported = true;
  if (tell) services_.diagnostics.ui.ShowMessage({message, MessageIcon::kExclamation});
  return false;
}

bool CRegistry::DeleteValue(const QString& name) {
  return LoggedDelete(services_.store.DeleteValue(root, Path(), name));
}

bool CRegistry::DeleteKey() {
  return LoggedDelete(DeleteKeyAdv(Path()));
}

QString CRegistry::DeleteKeyAdv(const QString& path) {
  for (const QString& subKey : services_.store.SubKeys(root, path)) {
    if (QString failure = DeleteKeyAdv(path + QLatin1Char('\\') + subKey); !failure.isEmpty()) return failure;
  }
  return services_.store.DeleteKey(root, path);
}

bool CRegistry::LoggedDelete(const QString& failure) const {
  if (!failure.isEmpty()) {
    services_.diagnostics.log.WriteLog(QStringLiteral("Error on Delete in Registry Key: ") + Path() +
                                       QStringLiteral(",  Err: ") + failure);
  }
  return failure.isEmpty();
}

}  // namespace qbx
