// Line breaks as widgets show them.

#pragma once

#include <QString>

namespace qbx {

/// The text with "\r\n" and "\r" turned into "\n".
[[nodiscard]] inline QString WithLineFeeds(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

}  // namespace qbx
