// Running a query into the rows of the current campaign.

#pragma once

#include <QString>
#include <array>
#include <optional>
#include <span>

#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "queries/filters.h"
#include "queries/left_out.h"
#include "queries/query_options.h"
#include "queries/query_parameters.h"

namespace qbx {

struct CurrentCampaign;
struct Options;

enum class QueryOutcome {
  kDone,
  kFailed,     ///< already reported
  kCancelled,  ///< by the button of the status box
};

/// The captions `lblRecords` 0 (rows of step 1) and 1 (rows after filters and consent). Written as a run goes on.
using RecordLabels = std::array<QString, 2>;

/// "Records found: " and the number.
[[nodiscard]] QString RecordsFoundText(qint64 records);

/// Whether a row may not be contacted and has to go: not consented, or (with the marketing platform in use) no channel
/// agreed to.
struct ConsentRule {
  bool onlyOptedIn = false;  ///< off: every row stays
  bool usingPlatform = false;
  [[nodiscard]] bool Removes(qint64 consentResponse, bool canSendSms, bool canSendEmail, bool canSendLetter) const;
};

/// Runs the stored procedure of the chosen query, which replaces the rows of the campaign in [Campaign Results], and
/// removes the rows that may not be contacted.
///
/// A run is all or nothing: procedure and removal are one transaction (in `Refresh`: those of both passes), so after a
/// failure or Cancel the rows and the record labels are what they were. The call runs on the database thread while
/// events are pumped. Failures are reported as "ProcessQuery"; no method throws.
class QueryProcessor {
 public:
  /// \param records  the labels to write
  /// \param leftOut  what stands beside them, written as the labels are. A host that cannot count leaves it unknown.
  QueryProcessor(Statements& statements, const Options& options, const QString& user, const CurrentCampaign& campaign,
                 QueryOptions& queryOptions, const Filters& filters, RecordLabels& records, LeftOut& leftOut,
                 Diagnostics diagnostics);

  /// \param step          0: the step-1 pass, 1: the step-2 pass
  /// \param applyFilters  part of a refresh: says so, and leaves removal to the step-2 pass
  [[nodiscard]] QueryOutcome ProcessQuery(int step, bool applyFilters);

  /// Both passes: the starting query again for its count, then the filtered one. Its checks (`CheckRefresh`) are the
  /// caller's.
  [[nodiscard]] QueryOutcome Refresh();

  /// Rows of the last run: of the starting query before anything was removed, and of the last pass after filters and
  /// consent.
  [[nodiscard]] const std::array<qint64, 2>& Records() const { return counts_; }

 private:
  struct Pass {
    QueryPass kind;
    bool applyFilters;
  };
  struct RunState;
  struct PassCounts;

  [[nodiscard]] std::optional<Message> Refusal();
  [[nodiscard]] QueryRequest Request() const;
  QueryOutcome Run(std::span<const Pass> passes);
  QueryOutcome RunWithReopen(std::span<const Pass> passes);
  QueryOutcome RunPasses(std::span<const Pass> passes, RunState& run);
  bool Announce(const Pass& pass);
  bool ReadAhead();
  void StopIfCancelled() const;
  [[nodiscard]] Command Prepare(const ProcedureCall& call);
  [[nodiscard]] Command PreparePass(const Pass& pass);
  [[nodiscard]] Command PrepareCount(const Pass& pass);
  void KeepLeftOut(const Pass& pass, bool ofBothPasses, const PassCounts& counts);
  void ShowCounts(const Pass& pass, const PassCounts& counts);

  Statements& statements_;
  const Options& options_;
  const QString& user_;
  const CurrentCampaign& campaign_;
  QueryOptions& queryOptions_;
  const Filters& filters_;
  RecordLabels& records_;
  LeftOut& leftOut_;
  std::array<qint64, 2> counts_ = {};
  Diagnostics diagnostics_;
};

}  // namespace qbx
