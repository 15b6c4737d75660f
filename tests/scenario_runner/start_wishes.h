// What a scenario says about a start.

#pragma once

#include <QVariantMap>

#include "settings/edition_names.h"

namespace qbx::scenario {

/// `start({...})`, read.
struct StartWishes {
  enum class Garage { kNone, kEmpty, kSample };

  Garage garage = Garage::kSample;
  int customers = 60;
  quint64 seed = 1;
  QString edition;  ///< name of the edition file's edition; empty: none is put into the program folder
  QString user = QStringLiteral("Pat");
  QString commandLine;
  QString database;  ///< name of the database file; empty: as edition, INI file and command line say
  QVariantMap ini;
  QVariantMap registry;
  QVariantMap options;
  QVariantMap userOptions;
  QVariantMap services;
  QVariant files;
  QVariant sandbox;
  QString clock;
  bool realPauses = false;
  bool reachable = true;

  /// \throws ScenarioError for a name that is not known, so that a misspelt one is noticed
  [[nodiscard]] static StartWishes Read(const QVariantMap& options);

  /// \param programFolder  with the edition files and QBX.INI in it
  [[nodiscard]] EditionNames Names(const QString& programFolder) const;
};

/// File that marks an edition ("boat", "truck", "parts", "vehicleSales", "commercialVehicle"), empty for "garage".
/// \throws ScenarioError for an edition that is not known
[[nodiscard]] QString EditionFile(const QString& edition);

}  // namespace qbx::scenario
