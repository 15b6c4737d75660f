// The rows of the current campaign, shown on step 3.

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
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
  std::vector<Caption> captions;  ///< of the columns whose captions are not their names
  QStringList optInColumns;       ///< the three columns with the customer's consent
  bool showOptIn = false;         ///< whether the consent columns are shown
  /// Columns that are never shown: the keys of row and campaign (the host's customer number is shown), and the
  /// consent columns under their other names.
  QStringList hiddenColumns;
};

[[nodiscard]] ResultsPresentation PresentResults(const EditionFlags& edition, const Options& options);

/// Reads and keeps the rows that the results grid shows.
///
/// The grid binds to `Rows()`; callbacks tell it when the rows were read again. No method throws. After a failure
/// (reported) rows and counters are unchanged, but rows of another campaign are dropped. Reading lets events run.
class ResultsView {
 public:
  /// The column that identifies a row.
  static constexpr char kRowKey[] = "RecordID";

  ResultsView(Statements& statements, Counters& counters, Diagnostics diagnostics);

  /// Called after `DisplayResults`: the grid must be bound again.
  void OnDisplayed(std::function<void()> callback) { displayed_ = std::move(callback); }
  /// Called by `RefreshResults` with a function that reads the rows again, so that the grid can keep its first visible
  /// row. That function throws DatabaseError on failure; whoever catches it tells the user.
  void OnRefresh(std::function<void(const std::function<void()>& requery)> callback) { refresh_ = std::move(callback); }

  /// Called whenever rows or their flags may have changed, so that derived data is out of date.
  void OnRead(std::function<void()> callback) { read_ = std::move(callback); }

  /// Called when the shown rows are replaced: by a query, or by those of another campaign.
  void OnOtherRows(std::function<void()> callback) { otherRows_ = std::move(callback); }

  /// A query has replaced the campaign's rows in the database: the shown rows are out of date until they are read
  /// again.
  void RowsReplaced() {
    outOfDate_ = true;
    if (otherRows_) otherRows_();
  }
  /// Whether the shown rows are not the campaign's present rows: they were replaced or could not be read.
  [[nodiscard]] bool OutOfDate(int campaignId) const {
    return outOfDate_ || campaignId != campaignId_ || !rows_.IsOpen();
  }

  /// Reads counters and rows of a campaign.
  /// \return false on failure; `Rows()` is then closed if it held another campaign's rows
  bool DisplayResults(int campaignId);
  /// Reads counters and rows of the same campaign again into the same recordset, which stays sorted.
  bool RefreshResults();

  /// The campaign whose rows are shown, and its rows, have a new number: reads them again under it.
  bool FollowCampaign(int campaignId);

  /// Some rows of the campaign were changed or taken out in the database. Reads counters, flags and kinds of only these
  /// rows and puts them into `Rows()`, with the same result as reading all rows again. The grid is told as by
  /// `RefreshResults`. When a query at another desk has replaced the rows meanwhile, the user is told.
  bool RefreshRows(const std::vector<qint64>& changed);
  /// Whether a query at another desk has made rows of the campaign since the shown ones were read. False also when the
  /// database does not tell.
  [[nodiscard]] bool HasNewerRows() const;
  /// What a flag of a row is shown as; nothing for a row that is not shown.
  [[nodiscard]] std::optional<bool> ShownFlag(qint64 recordId, const QString& column) const;
  /// The kinds of the rows; found out at the first call after the rows were read.
  [[nodiscard]] const RowKinds& Kinds();

  [[nodiscard]] Recordset& Rows() { return rows_; }
  /// The number of rows without regard to the grid's filter, and " records "; "0 records " before the first display.
  [[nodiscard]] QString CountText() const;
  [[nodiscard]] int CampaignId() const { return campaignId_; }

 private:
  void ReadAgainWith(const QString& sql, Recordset& rows);
  bool Refresh(const std::function<void()>& readRows);
  void ReadAgain();
  enum class Put {
    kShown,
    kImpossible,  ///< some rows are new, or the host cannot read single rows
    kReplaced,    ///< a query has replaced the rows
  };
  [[nodiscard]] Put PutRows(const std::vector<qint64>& changed);
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
