// Running a query that fills the rows of the current campaign.

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

/// The captions `lblRecords` 0 (rows of step 1) and 1 (rows after filters and consent). A run updates them.
using RecordLabels = std::array<QString, 2>;

/// "Records found: " and the number.
[[nodiscard]] QString RecordsFoundText(qint64 records);

/// Whether a row may not be contacted and is removed: the customer did not consent or, when the marketing platform is
/// in use, agreed to no channel.
struct ConsentRule {
  bool onlyOptedIn = false;  ///< false: every row stays
  bool usingPlatform = false;
  [[nodiscard]] bool Removes(qint64 consentResponse, bool canSendSms, bool canSendEmail, bool canSendLetter) const;
};

/// Runs the stored procedure of the chosen query, which replaces the campaign's rows in [Campaign Results], and removes
/// the rows that may not be contacted.
///
/// A run is all or nothing: procedure and removal are one transaction (in `Refresh` those of both passes). After a
/// failure or Cancel the rows and the record labels are unchanged. The call runs on the database thread while events
/// are pumped. Failures are reported as "ProcessQuery"; no method throws.
class QueryProcessor {
 public:
  /// \param records  the labels to write
  /// \param leftOut  the counts beside them, written at the same time; unknown when the host cannot count
  QueryProcessor(Statements& statements, const Options& options, const QString& user, const CurrentCampaign& campaign,
                 QueryOptions& queryOptions, const Filters& filters, RecordLabels& records, LeftOut& leftOut,
                 Diagnostics diagnostics);

  /// \param step          0 for the pass of step 1, 1 for the pass of step 2
  /// \param applyFilters  whether this is part of a refresh: the status says so, and rows are removed only in the pass
  ///                      of step 2
  [[nodiscard]] QueryOutcome ProcessQuery(int step, bool applyFilters);

  /// Runs both passes: the starting query again for its count, then the filtered one. The caller checks with
  /// `CheckRefresh`.
  [[nodiscard]] QueryOutcome Refresh();

  /// Rows of the last run: of the starting query before removal, and of the last pass after filters and consent.
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
  [[nodiscard]] bool CancelPressed() const;
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
