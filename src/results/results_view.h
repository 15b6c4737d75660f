// The rows of the current campaign, as step 3 shows them.

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "database/recordset.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "results/counters.h"
#include "results/row_kinds.h"

namespace qbx {

struct EditionFlags;
struct Options;

/// How the grid presents the rows.
struct ResultsPresentation {
  struct Caption {
    QString column;
    QString caption;
    friend bool operator==(const Caption&, const Caption&) = default;
  };
  std::vector<Caption> captions;  ///< of columns that are not captioned by their names
  QStringList optInColumns;       ///< the three columns with the customer's consent
  bool showOptIn = false;         ///< otherwise they are hidden
  QStringList
      hiddenColumns;  ///< never shown: the keys of row and campaign (the customer's number is the host's, and shown), and
                      ///< the consent columns under their other names
};

[[nodiscard]] ResultsPresentation PresentResults(const EditionFlags& edition, const Options& options);

/// Reads and keeps the rows that the results grid shows.
///
/// The grid binds to `Rows()` and is told by the two callbacks when these were read anew. No method throws: a failure
/// is reported, and rows and counters stay what they were, but that rows of another campaign are given up. Reading lets
/// events run.
class ResultsView {
 public:
  /// The column that identifies a row.
  static constexpr char kRowKey[] = "RecordID";

  ResultsView(Statements& statements, Counters& counters, Diagnostics diagnostics);

  /// Called after `DisplayResults`: bind the grid again.
  void OnDisplayed(std::function<void()> callback) { displayed_ = std::move(callback); }
  /// Called by `RefreshResults` with what reads the rows again, so that the grid can keep its first visible row around
  /// it. Reading throws DatabaseError when it fails; whoever catches it tells the user.
  void OnRefresh(std::function<void(const std::function<void()>& requery)> callback) { refresh_ = std::move(callback); }

  /// Called whenever rows or their flags may have changed: what was worked out from them is out of date.
  void OnRead(std::function<void()> callback) { read_ = std::move(callback); }

  /// Called when the rows shown are no longer those that were: a query replaced them, or another campaign's came.
  void OnOtherRows(std::function<void()> callback) { otherRows_ = std::move(callback); }

  /// A query has replaced the rows of the campaign in the database: those shown are out of date until they are read again.
  void RowsReplaced() {
    outOfDate_ = true;
    if (otherRows_) otherRows_();
  }
  /// The rows shown are not the campaign's: they were replaced, or could not be read.
  [[nodiscard]] bool OutOfDate(int campaignId) const {
    return outOfDate_ || campaignId != campaignId_ || !rows_.IsOpen();
  }

  /// Reads counters and rows of a campaign.
  /// \return false on failure; `Rows()` is closed then when it held another campaign's
  bool DisplayResults(int campaignId);
  /// Reads counters and rows of the same campaign again, in place: sort and recordset stay.
  bool RefreshResults();

  /// The campaign whose rows are shown has another number now, and its rows with it: reads them under that one, in place.
  bool FollowCampaign(int campaignId);

  /// Some rows of the campaign were changed or taken out in the database: reads counters, flags and kinds of these alone and puts them into `Rows()`,
  /// which then are what reading all again would give. The grid is told as by `RefreshResults`.
  bool RefreshRows(const std::vector<qint64>& changed);
  /// What the rows are; worked out when it is first asked for after they were read.
  [[nodiscard]] const RowKinds& Kinds();

  [[nodiscard]] Recordset& Rows() { return rows_; }
  /// The row count, whatever the grid shows of them, and " records "; "0 records " until the first display.
  [[nodiscard]] QString CountText() const;
  [[nodiscard]] int CampaignId() const { return campaignId_; }

 private:
  void ReadAgainWith(const QString& sql, Recordset& rows);
  bool Refresh(const std::function<void()>& readRows);
  void ReadAgain();
  [[nodiscard]] bool PutRows(const std::vector<qint64>& changed);
  [[nodiscard]] bool PutFlags(const Recordset& fresh, QSet<qint64> changed);
  [[nodiscard]] Recordset ReadTroubles();

  Statements& statements_;
  Counters& counters_;
  Diagnostics diagnostics_;
  Recordset rows_;
  RowKinds kinds_;
  bool kindsRead_ = false;
  int campaignId_ = 0;
  bool outOfDate_ = false;
  std::function<void()> read_;
  std::function<void()> otherRows_;
  std::function<void()> displayed_;
  std::function<void(const std::function<void()>&)> refresh_;
};

}  // namespace qbx
