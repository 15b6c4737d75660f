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
/// No routine throws. One that fails has reported it under its own name in the common error report and returns false;
/// the record and `CampaignChanged` then are as they were. Every write carries the user of the event context. Whenever
/// the record's ID changes here, the campaign ID of the event context follows.
class CampaignStorage {
 public:
  /// What keeps a campaign from being deleted now, if anything. Never throws.
  using DeletionGuard = std::function<std::optional<Message>(int campaignId)>;

  CampaignStorage(Statements& statements, EventLog& events, EventContext& context, Diagnostics diagnostics,
                  CurrentCampaign& current, DeletionGuard deletionGuard = {});

  /// Starts a new campaign: the defaults, a temporary ID (0 when none could be had), the range from twelve calendar
  /// months ago to now. `CampaignChanged` stays.
  void InitialiseCampaign();
  /// Gives a record that was started while the database was away the temporary ID that it lacks. A database that was
  /// never there is left to what comes next.
  /// \return false when there is still none to be had (reported)
  bool EnsureId();

  /// Adds the record as a new campaign; its ID becomes the permanent one and `CampaignChanged` false. A campaign number
  /// below 1 from the database counts as a failure.
  bool SaveCampaign();
  /// Stores the record under its ID and sets `CampaignChanged` false.
  bool UpdateCampaign();
  /// Renames or re-describes a stored campaign. The record is not touched.
  bool UpdateCampaignDetails(int campaignId, const QString& name, const QString& description);

  /// Reads a stored campaign into the record, after an event "Load Campaign: " with the ID. NULL reads as 0, false, ""
  /// or an invalid date; a number that does not fit in 32 bits as the nearest that does. A campaign that does not exist
  /// is told to the user. `CampaignChanged` stays.
  /// \return true when the record holds the campaign
  bool LoadCampaign(int campaignId);

  /// \param newName  see `CampaignCopyName`
  /// \return the number of the copy, 0 on failure
  int CopyCampaign(int campaignId, const QString& newName);
  /// Deletes a stored campaign with its results, unless the guard refuses (the user is told). Nothing can come between asking it and deleting.
  bool DeleteCampaign(int campaignId);

  /// Who every write is made for.
  [[nodiscard]] const QString& User() const { return context_.user; }

 private:
  /// Prepares a procedure and lets `run` set its parameters and execute it; reports any failure under `routine`.
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
