// Drafts: texts that were not saved when the program was killed, as files of the program folder.

#pragma once

#include <QDateTime>
#include <vector>

#include "diagnostics/log_file.h"
#include "platform/host_info.h"
#include "settings/startup_values.h"
#include "wizard/campaign_texts.h"

namespace qbx {

/// The texts of one campaign as they were being written.
struct Draft {
  QString file;        ///< its path
  int campaignId = 0;  ///< below 1 for a campaign that was never saved
  QString campaignName;
  QDateTime written;
  CampaignTexts texts;
};

/// The drafts of the current user on this computer for this database. A file belongs to the process that writes it;
/// another process reads it only when that process has ended.
class Drafts {
 public:
  Drafts(const StartupValues& startup, const HostInfo& host, const LogFile& log);

  /// The path of this process's draft of a campaign.
  [[nodiscard]] QString File(int campaignId) const;
  /// The content of a draft's file.
  [[nodiscard]] QByteArray Bytes(const Draft& draft) const;

  /// The path of the lock of the program that asks about the drafts. A second program that starts at the same moment
  /// does not ask.
  [[nodiscard]] QString OfferLock() const;

  /// Drafts whose program ended without removing them, newest first. To be called before this process writes a draft. A
  /// file that cannot be read is logged and renamed.
  [[nodiscard]] std::vector<Draft> LeftBehind() const;

 private:
  /// The user's name as a part of a file name.
  [[nodiscard]] QString User() const;
  /// The beginning of the names of the user's files.
  [[nodiscard]] QString Prefix() const;

  const StartupValues& startup_;
  const HostInfo& host_;
  const LogFile& log_;
};

}  // namespace qbx
