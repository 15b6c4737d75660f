// The program folder of a round, with an empty host database.

#pragma once

#include "support/temp_folder.h"

namespace qbx::consent {

class GarageFolder {
 public:
  GarageFolder();
  [[nodiscard]] QString Path() const { return folder_.Path(); }
  /// Where the program looks for its database.
  [[nodiscard]] QString DatabaseFile() const { return folder_.File(QStringLiteral("QBXKorvelManager.db")); }

 private:
  test::TempFolder folder_;
};

/// The seed of one round.
[[nodiscard]] inline quint64 RoundSeed(quint64 seed, int number) {
  return seed * 1000003U + static_cast<quint64>(number);
}

}  // namespace qbx::consent
