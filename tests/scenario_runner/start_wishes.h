// The wishes of a scenario for a start.

#pragma once

#include <QVariantMap>

#include "settings/edition_names.h"

namespace qbx::scenario {

/// The wishes in `start({...})`, with defaults. tests/scenarios/README.md explains each one.
class StartWishes {
 public:
  StartWishes() = default;
  /// \throws ScenarioError for an unknown name or garage, so that a misspelt one is noticed
  explicit StartWishes(const QVariantMap& options);

  [[nodiscard]] QVariant operator[](const char* name) const { return wishes_.value(QLatin1String(name)); }
  [[nodiscard]] QString Text(const char* name) const { return (*this)[name].toString(); }
  [[nodiscard]] QVariantMap Map(const char* name) const { return (*this)[name].toMap(); }
  /// The file that marks the edition, empty for the garage edition. \throws ScenarioError for an unknown edition
  [[nodiscard]] QString EditionFile() const;
  /// \param programFolder  with the edition files and QBX.INI in it
  [[nodiscard]] EditionNames Names(const QString& programFolder) const;
  /// Keeps the database of the last start unless another is named.
  void KeepDatabase(const StartWishes& last);

 private:
  QVariantMap wishes_;
};

}  // namespace qbx::scenario
