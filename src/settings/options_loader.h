// Reading the company's options from the host database.

#pragma once

#include "database/event_context.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "platform/ini_file.h"
#include "settings/host_cipher.h"
#include "settings/options.h"
#include "settings/startup_values.h"

namespace qbx {

/// The call that reads the options of a company; no row when it has none.
[[nodiscard]] QString OptionsCall(const QString& companyCode);

/// Fills `Options`. Called after every successful connection, and again before each query run.
class OptionsLoader {
 public:
  /// All references must outlive the loader.
  OptionsLoader(Statements& statements, IniFile& ini, HostCipher& cipher, StartupValues& startup, EventContext& context,
                Options& options, Diagnostics diagnostics);

  /// Compares the module's level with kModuleSchemaLevel (a difference is shown to the user; loading goes on), reads
  /// the rows of company "A" and of `startup.companyCode`, and renews the edition names.
  ///
  /// Also sets `context.DatabaseVersion`, `startup.edition` (the "vrm" marker), the command time-out of the shared
  /// connection, and "Customer" of the INI file.
  /// \return false when a read failed: the user was told, and what was read before the failure stays. Nothing is shown
  ///         as long as the program was never connected.
  bool LoadOptions();

 private:
  bool ReadVersions();
  bool ReadRows();
  bool OpenRow(const QString& companyCode, Recordset& row);
  bool ReadKeys(const Recordset& row, OptionSource source);
  void ApplyRule(OptionRule rule);
  void FollowCustomerCode();
  void TellUpdateNeeded();

  Statements& statements_;
  IniFile& ini_;
  HostCipher& cipher_;
  StartupValues& startup_;
  EventContext& context_;
  Options& options_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
