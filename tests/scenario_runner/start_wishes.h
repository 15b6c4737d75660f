// What a scenario says about a start.

#pragma once

#include <QVariantMap>

#include "settings/edition_names.h"

namespace qbx::scenario {

/// `start({...})`, with what it does not name filled in. tests/scenarios/README.md says what each name means.
class StartWishes {
 public:
  StartWishes() = default;
  /// \throws ScenarioError for a name or a garage that is not known, so that a misspelt one is noticed
  explicit StartWishes(const QVariantMap& options);

  [[nodiscard]] QVariant operator[](const char* name) const { return wishes_.value(QLatin1String(name)); }
  [[nodiscard]] QString Text(const char* name) const { return (*this)[name].toString(); }
  [[nodiscard]] QVariantMap Map(const char* name) const { return (*this)[name].toMap(); }
  /// File that marks the edition, empty for that of garages. \throws ScenarioError for an edition that is not known
  [[nodiscard]] QString EditionFile() const;
  /// \param programFolder  with the edition files and QBX.INI in it
  [[nodiscard]] EditionNames Names(const QString& programFolder) const;
  /// Keeps the database of the last start unless another is named.
  void KeepDatabase(const StartWishes& last);

 private:
  QVariantMap wishes_;
};

}  // namespace qbx::scenario
