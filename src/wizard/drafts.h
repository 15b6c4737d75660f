// Texts that were not saved when the program was killed, as files of the program folder.

#pragma once

#include <QDateTime>
#include <vector>

#include "diagnostics/log_file.h"
#include "platform/host_info.h"
#include "settings/startup_values.h"
#include "wizard/campaign_texts.h"

namespace qbx {

/// The texts of one campaign as somebody was writing them.
struct Draft {
  QString file;        ///< its path
  int campaignId = 0;  ///< below 1: a campaign that was never saved
  QString campaignName;
  QDateTime written;
  CampaignTexts texts;
};

/// The drafts of the user who is logged on, on this computer and of this database. A file belongs to the process that writes it; another one looks at
/// it only when that process is gone.
class Drafts {
 public:
  Drafts(const StartupValues& startup, const HostInfo& host, const LogFile& log);

  /// Where this process keeps its draft of a campaign.
  [[nodiscard]] QString File(int campaignId) const;
  /// What is written there.
  [[nodiscard]] QByteArray Bytes(const Draft& draft) const;

  /// The lock of the program that asks the user about them: another one that starts at the same moment does not.
  [[nodiscard]] QString OfferLock() const;

  /// Drafts whose program ended without removing them, newest first; to be asked before this process writes one. A file that cannot be understood is reported in the log and set aside under another name.
  [[nodiscard]] std::vector<Draft> LeftBehind() const;

 private:
  /// The user as a part of a file name.
  [[nodiscard]] QString User() const;
  /// Begins every name of a file of the user.
  [[nodiscard]] QString Prefix() const;

  const StartupValues& startup_;
  const HostInfo& host_;
  const LogFile& log_;
};

}  // namespace qbx
