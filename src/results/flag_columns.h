// The flag columns of a results row.

#pragma once

#include <QLatin1String>
#include <QStringList>

namespace qbx {

inline constexpr QLatin1String kSendSmsFlag("Send_SMS");
inline constexpr QLatin1String kSendEmailFlag("Send_Email");
inline constexpr QLatin1String kSendLetterFlag("Send_Letter");
inline constexpr QLatin1String kProcessedFlag("Processed");

/// The flags that choose how a customer is contacted.
[[nodiscard]] inline const QStringList& SendFlags() {
  static const QStringList columns = {kSendSmsFlag, kSendEmailFlag, kSendLetterFlag};
  return columns;
}

/// Every flag of a row.
[[nodiscard]] inline const QStringList& FlagColumns() {
  static const QStringList columns = SendFlags() + QStringList{kProcessedFlag};
  return columns;
}

}  // namespace qbx
