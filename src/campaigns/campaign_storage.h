// Saving, loading, copying and deleting campaigns.

#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "campaigns/campaign_record.h"
#include "database/event_context.h"
#include "database/event_log.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"

namespace qbx {

/// Moves the current campaign to and from the host database.
///
///   storage.InitialiseCampaign();
///   if (storage.LoadCampaign(12)) setup.SetupCampaignData();
///
/// No routine throws. A routine that fails reports the failure under its own name in the common error report and
/// returns false; the record and `CampaignChanged` are then unchanged. Every write carries the user of the event
/// context. Whenever the record's ID changes here, the campaign ID of the event context changes with it.
class CampaignStorage {
 public:
  /// Why a campaign must not be deleted now; nothing when it may be. Never throws.
  using DeletionGuard = std::function<std::optional<Message>(int campaignId)>;

  CampaignStorage(Statements& statements, EventLog& events, EventContext& context, Diagnostics diagnostics,
                  CurrentCampaign& current, DeletionGuard deletionGuard = {});

  /// Starts a new campaign: the defaults, a temporary ID (0 when none could be had), the range from twelve calendar
  /// months ago to now. `CampaignChanged` is not touched.
  void InitialiseCampaign();
  /// Gives the record its temporary ID when it was started while the database was away. Does nothing when there never
  /// was a database.
  /// \return false when there is still no ID (reported)
  bool EnsureId();

  /// Adds the record as a new campaign, sets its permanent ID and clears `CampaignChanged`. A campaign number below 1
  /// from the database counts as a failure.
  bool SaveCampaign();
  /// Stores the record under its ID and clears `CampaignChanged`.
  bool UpdateCampaign();
  /// Changes name and description of a stored campaign. The record is not touched.
  bool UpdateCampaignDetails(int campaignId, const QString& name, const QString& description);

  /// Reads a stored campaign into the record, after it wrote the event "Load Campaign: " with the ID. NULL becomes 0,
  /// false, "" or an invalid date; a number beyond 32 bits becomes the nearest that fits. The user is told when the
  /// campaign does not exist. `CampaignChanged` is not touched.
  /// \return true when the record holds the campaign
  bool LoadCampaign(int campaignId);

  /// \param newName  see `CampaignCopyName`
  /// \return the number of the copy, 0 on failure
  int CopyCampaign(int campaignId, const QString& newName);
  /// Deletes a stored campaign with its results, unless the guard refuses (the user is told). The guard and the
  /// deletion are one transaction.
  bool DeleteCampaign(int campaignId);

  /// The user in whose name everything is written.
  [[nodiscard]] const QString& User() const { return context_.user; }

 private:
  /// Prepares a procedure and lets `run` set its parameters and execute it; reports a failure under `routine`.
  bool Call(const char* routine, const char* procedure, const std::function<void(Command&)>& run);
  void SetUser(Command& command) const;
  void SetId(int id);

  Statements& statements_;
  EventLog& events_;
  EventContext& context_;
  Diagnostics diagnostics_;
  CurrentCampaign& current_;
  DeletionGuard deletionGuard_;
};

}  // namespace qbx
