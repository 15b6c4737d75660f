// Keys of rows as procedures take them.

#pragma once

#include <QString>
#include <vector>

namespace qbx {

/// The text "4711,4712".
[[nodiscard]] inline QString KeyList(const std::vector<qint64>& keys) {
  QString list;
  list.reserve(static_cast<qsizetype>(keys.size()) * 8);
  for (const qint64 key : keys) {
    if (!list.isEmpty()) list += u',';
    list += QString::number(key);
  }
  return list;
}

}  // namespace qbx
