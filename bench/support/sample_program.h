// The program without windows, on a sample garage in a temporary folder.

#pragma once

#include <QTemporaryDir>
#include <memory>

#include "desk/campaign_desk.h"
#include "silent_ui.h"
#include "startup/application.h"

namespace qbx::bench {

/// Makes the folder below TMPDIR, which chooses the disk.
class SampleProgram {
 public:
  /// Makes the garage. Ends the process when something fails.
  explicit SampleProgram(int customers);

  /// Starts the program. Call it after all changes to the database.
  void Start();

  /// The database file, and a new copy of it for the comparison.
  [[nodiscard]] QString File() const;
  [[nodiscard]] QString CopyForPeer() const;

  [[nodiscard]] Application& App() { return *app_; }
  [[nodiscard]] CampaignDesk& Desk() { return *desk_; }
  [[nodiscard]] const Clock& Time() const { return clock_; }
  [[nodiscard]] const SilentUi& Ui() const { return ui_; }

 private:
  QTemporaryDir folder_;
  SystemClock clock_;
  SilentUi ui_;
  SendEmailView view_;
  std::unique_ptr<Application> app_;
  std::unique_ptr<CampaignDesk> desk_;
};

}  // namespace qbx::bench
