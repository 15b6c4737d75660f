// The program, started without windows on a sample garage in a folder that goes away at the end.

#pragma once

#include <QTemporaryDir>
#include <memory>

#include "desk/campaign_desk.h"
#include "silent_ui.h"
#include "startup/application.h"

namespace qbx::bench {

/// The folder is made below TMPDIR, so the disk is chosen there.
class SampleProgram {
 public:
  /// Makes the garage. Ends the process when something fails.
  explicit SampleProgram(int customers);

  /// Starts the program on it, once the database is as it shall be.
  void Start();

  /// The database file, and its copy for a peer, made now.
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
