// The values that start-up settles once for the whole program.

#pragma once

#include <QString>

namespace qbx {

/// Which edition of the host product is installed here; all false means the garage edition.
struct EditionFlags {
  bool vehicleSales = false;
  bool truck = false;
  bool boat = false;
  bool parts = false;
  bool commercialVehicle = false;

  friend bool operator==(const EditionFlags&, const EditionFlags&) = default;
};

/// Process-wide values of one run.
struct StartupValues {
  QString ProgramFolder;  ///< ends with a separator
  QString shortVersion;   ///< "1.0", or "1.0.3" when there is a revision
  QString fullVersion;    ///< always three parts
  EditionFlags edition;
  QString customerCode;  ///< lower case
  bool debug = false;
  QString commandLine;     ///< cleared once a switch was recognised
  QString DatabaseSuffix;  ///< "_" and the value of /database:, or empty
  QString instance;        ///< upper case
  QString user;            ///< at most 20 characters
  QString RunKey;          ///< marks the work of this run; at most 36 characters
  QString databaseName;
  QString title;
  QString ProductKey;                         ///< registry path of the host product, ends with "\"
  QString companyCode = QStringLiteral("A");  ///< the login's company; read from the registry before connecting
};

}  // namespace qbx
