#include "platform/systemd_services.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QUuid>
#include <utility>

namespace qbx {
namespace {

constexpr int kCallTimeout = 10000;      // milliseconds
constexpr int kRequestTimeout = 120000;  // leaves time to type the password that the system may ask for
constexpr QLatin1String kService("org.freedesktop.systemd1");

QString WithSuffix(const QString& unit) {
  return unit.isEmpty() || unit.endsWith(QLatin1String(".service")) ? unit : unit + QLatin1String(".service");
}

ServiceState StateOf(const QString& activeState) {
  if (activeState == QLatin1String("activating")) return ServiceState::kStartPending;
  if (activeState == QLatin1String("deactivating")) return ServiceState::kStopPending;
  const bool isActive = activeState == QLatin1String("active") || activeState == QLatin1String("reloading") ||
                        activeState == QLatin1String("refreshing");
  return isActive ? ServiceState::kRunning : ServiceState::kStopped;
}

/// Whether the unit file of a unit is `file`: the file of its own name, or that of its template ("name@.service" for
/// "name@x.service").
bool ComesFrom(const QString& unit, const QString& file) {
  const qsizetype at = unit.indexOf(u'@');
  return file == unit || (at > 0 && file == unit.left(at + 1) + QLatin1String(".service"));
}

}  // namespace

/// A private connection to the bus, and systemd's manager object on it.
class SystemdServices::Bus {
 public:
  Bus()
      : name_(QUuid::createUuid().toString()),
        connection_(QDBusConnection::connectToBus(QDBusConnection::SystemBus, name_)) {}
  ~Bus() { QDBusConnection::disconnectFromBus(name_); }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  [[nodiscard]] bool HasSystemd() const {
    return connection_.isConnected() && connection_.interface()->isServiceRegistered(kService).value();
  }

  [[nodiscard]] QDBusMessage CallManager(const QString& method, const QVariantList& arguments, int timeout) const {
    QDBusMessage call = QDBusMessage::createMethodCall(kService, QStringLiteral("/org/freedesktop/systemd1"),
                                                       QStringLiteral("org.freedesktop.systemd1.Manager"), method);
    call.setArguments(arguments);
    call.setInteractiveAuthorizationAllowed(true);
    return connection_.call(call, QDBus::Block, timeout);
  }

  /// \return a property of a unit, which is loaded for this if necessary; nothing when systemd does not answer
  [[nodiscard]] std::optional<QString> UnitProperty(const QString& unit, const QString& property) const {
    const QDBusMessage loaded = CallManager(QStringLiteral("LoadUnit"), {unit}, kCallTimeout);
    if (loaded.type() != QDBusMessage::ReplyMessage || loaded.arguments().isEmpty()) return std::nullopt;
    const QString path = loaded.arguments().constFirst().value<QDBusObjectPath>().path();
    QDBusMessage call = QDBusMessage::createMethodCall(
        kService, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({QStringLiteral("org.freedesktop.systemd1.Unit"), property});
    const QDBusMessage reply = connection_.call(call, QDBus::Block, kCallTimeout);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return std::nullopt;
    return reply.arguments().constFirst().value<QDBusVariant>().variant().toString();
  }

 private:
  QString name_;
  QDBusConnection connection_;
};

SystemdServices::SystemdServices(UnitOf unitOf) : unitOf_(std::move(unitOf)) {}

SystemdServices::~SystemdServices() = default;

SystemdServices::Bus& SystemdServices::TheBus() {
  if (!bus_) bus_ = std::make_unique<Bus>();
  return *bus_;
}

bool SystemdServices::Available() {
  return TheBus().HasSystemd();
}

bool SystemdServices::Exists(const QString& service) {
  const QString unit = WithSuffix(unitOf_(service));
  if (unit.isEmpty()) return false;
  const std::optional<QString> loadState = TheBus().UnitProperty(unit, QStringLiteral("LoadState"));
  return loadState && *loadState != QLatin1String("not-found");
}

std::optional<bool> SystemdServices::FindByListing(const QString& service, QString* error) {
  const QDBusMessage reply = TheBus().CallManager(QStringLiteral("ListUnitFiles"), {}, kCallTimeout);
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
    *error = reply.errorMessage();
    return std::nullopt;
  }
  const QString unit = WithSuffix(unitOf_(service));
  const auto files = reply.arguments().constFirst().value<QDBusArgument>();
  bool found = false;
  files.beginArray();
  while (!files.atEnd()) {
    QString path;
    QString state;
    files.beginStructure();
    files >> path >> state;
    files.endStructure();
    found = found || (!unit.isEmpty() && ComesFrom(unit, path.section(u'/', -1)));
  }
  files.endArray();
  return found;
}

bool SystemdServices::Request(const QString& service, ServiceAction action) {
  if (action == ServiceAction::kPause || action == ServiceAction::kContinue || !Exists(service)) return false;
  // systemd accepts a request that changes nothing; a service manager must refuse it.
  const bool stopped = State(service) == ServiceState::kStopped;
  if (stopped != (action == ServiceAction::kStart)) return false;
  const QString method = action == ServiceAction::kStart ? QStringLiteral("StartUnit") : QStringLiteral("StopUnit");
  const QVariantList arguments = {WithSuffix(unitOf_(service)), QStringLiteral("replace")};
  return TheBus().CallManager(method, arguments, kRequestTimeout).type() == QDBusMessage::ReplyMessage;
}

std::optional<ServiceState> SystemdServices::State(const QString& service) {
  if (!Exists(service)) return std::nullopt;
  const std::optional<QString> active =
      TheBus().UnitProperty(WithSuffix(unitOf_(service)), QStringLiteral("ActiveState"));
  if (!active) return std::nullopt;
  return StateOf(*active);
}

}  // namespace qbx
