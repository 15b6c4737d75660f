#include "database/odbc/server_address.h"

#include <QStringList>
#include <algorithm>

#include "database/database_error.h"
#include "util/text.h"

namespace qbx {
namespace {

constexpr int kHighestPort = 65535;
constexpr qsizetype kLongestInstance = 32;  // bytes; the question for its port cannot hold more

[[noreturn]] void RefuseName(const QString& server) {
  const QString text =
      QStringLiteral("\"%1\" cannot be the name of a server. Write HOST, HOST\\INSTANCE or HOST,PORT.").arg(server);
  throw DatabaseError(kUnusableSetting, text, {{0, QString(), text}});
}

bool OfHost(QChar character) {
  return character.isLetterOrNumber() || QStringLiteral("-_.:%").contains(character);
}

bool OfInstance(QChar character) {
  return character.isLetterOrNumber() || QStringLiteral("_$#-").contains(character);
}

/// Whether a backslash is written twice, or has nothing behind it. The instance, or the port behind it, would be lost.
bool HasEmptyPart(const QString& place) {
  return std::ranges::any_of(place.split(u'\\'), [](const QString& part) { return part.trimmed().isEmpty(); });
}

/// Removes the port from the host.
/// \return 0 when there is no port, -1 when it is not a valid one
int TakePort(QString& host) {
  const bool oneColon = host.count(u':') == 1;
  const qsizetype mark = host.contains(u',') ? host.indexOf(u',') : oneColon ? host.indexOf(u':') : -1;
  if (mark < 0) return 0;
  bool isNumber = false;
  const int port = host.mid(mark + 1).trimmed().toInt(&isNumber);
  host = host.left(mark).trimmed();
  return isNumber && port > 0 && port <= kHighestPort ? port : -1;
}

}  // namespace

ServerAddress ServerAddress::Parse(const QString& server) {
  const QString name = server.trimmed();
  const bool withProtocol = name.startsWith(QLatin1String("tcp:"), Qt::CaseInsensitive);
  const QString place = withProtocol ? name.mid(4) : name;
  ServerAddress address;
  address.host = place.section(u'\\', 0, 0).trimmed();
  address.instance = place.section(u'\\', 1, 1).trimmed();
  // "HOST\INSTANCE,1500": the port may also follow the instance.
  const int portOfInstance = TakePort(address.instance);
  address.port = TakePort(address.host);
  if (address.port == 0) address.port = portOfInstance;
  if (address.host == QLatin1String(".") || EqualsNoCase(address.host, QStringLiteral("(local)")))
    address.host = QStringLiteral("localhost");
  if (EqualsNoCase(address.instance, QStringLiteral("MSSQLSERVER"))) address.instance.clear();
  const bool good = address.port >= 0 && portOfInstance >= 0 && !address.host.isEmpty() && !HasEmptyPart(place) &&
                    std::ranges::all_of(address.host, OfHost) && std::ranges::all_of(address.instance, OfInstance) &&
                    address.instance.toUtf8().size() <= kLongestInstance;
  if (!good) RefuseName(server);
  if (address.port > 0) address.instance.clear();
  if (address.port == 0 && address.instance.isEmpty()) address.port = kDefaultServerPort;
  return address;
}

}  // namespace qbx
