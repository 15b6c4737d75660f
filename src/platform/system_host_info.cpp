#include "platform/system_host_info.h"

#include <unistd.h>

#include <QCoreApplication>
#include <array>

#include "platform/safe_file.h"

namespace qbx {

QString SystemHostInfo::ComputerName() const {
  std::array<char, 256> name = {};
  if (::gethostname(name.data(), name.size() - 1) != 0) return {};
  return QString::fromUtf8(name.data()).section(u'.', 0, 0).toUpper();
}

qint64 SystemHostInfo::ProcessId() const {
  return QCoreApplication::applicationPid();
}

qint64 SystemHostInfo::ProcessStart(qint64 processId) const {
  constexpr qsizetype kStartTime = 19;  // counted from the field after the program's name
  const std::optional<QByteArray> status = ReadWholeFile(QStringLiteral("/proc/%1/stat").arg(processId));
  if (!status) return 0;
  // The program's name is in brackets and may itself hold blanks and brackets.
  const QList<QByteArray> fields = status->mid(status->lastIndexOf(')') + 2).split(' ');
  return fields.value(kStartTime).toLongLong();
}

}  // namespace qbx
