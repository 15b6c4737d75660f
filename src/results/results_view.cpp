#include "results/results_view.h"

#include <QHash>
#include <algorithm>

#include "database/procedure.h"
#include "results/key_list.h"
#include "settings/options.h"
#include "settings/startup_values.h"

namespace qbx {
namespace {

QString RowsOf(int campaignId) {
  return QStringLiteral("proc_selp_Campaign_Results (%1)").arg(campaignId);
}

Message ReplacedMessage() {
  return {
      .text = QStringLiteral(
          "The results of this campaign were made anew at another desk. They have been read again, and nothing was changed."),
      .icon = MessageIcon::kExclamation};
}

}  // namespace

ResultsPresentation PresentResults(const EditionFlags& edition, const Options& options) {
  ResultsPresentation presentation;
  if (edition.boat) {
    presentation.captions = {{QStringLiteral("Vehicle"), QStringLiteral("Boat")},
                             {QStringLiteral("Last_Mileage"), QStringLiteral("Last Hours")}};
  }
  presentation.optInColumns = {QStringLiteral("SMS Opt-In"), QStringLiteral("Email Opt-In"),
                               QStringLiteral("Letter Opt-In")};
  presentation.showOptIn = options.Using_Vrelo;
  presentation.hiddenColumns = {QString::fromLatin1(ResultsView::kRowKey), QStringLiteral("CampaignID"),
                                QStringLiteral("Can_Send_SMS"), QStringLiteral("Can_Send_Email"),
                                QStringLiteral("Can_Send_Letter")};
  return presentation;
}

ResultsView::ResultsView(Statements& statements, Counters& counters, Diagnostics diagnostics)
    : statements_(statements), counters_(counters), diagnostics_(diagnostics) {}

bool ResultsView::DisplayResults(int campaignId) {
  counters_.UpdateCounters(campaignId);
  Recordset rows;
  const bool read = !statements_.dbOpenRecLong(rows, RowsOf(campaignId));
  // Rows of the same campaign stay. Rows of another campaign would be taken for this one's.
  if (!read && campaignId == campaignId_) return false;
  rows_ = std::move(rows);
  if (campaignId != campaignId_ && otherRows_) otherRows_();
  campaignId_ = campaignId;
  outOfDate_ = false;
  kindsRead_ = false;
  if (read_) read_();
  if (displayed_) displayed_();
  return read;
}

bool ResultsView::RefreshResults() {
  return Refresh([this] { ReadAgain(); });
}

bool ResultsView::RefreshRows(const std::vector<qint64>& changed) {
  Put put = Put::kShown;
  const bool read = Refresh([&] {
    put = PutRows(changed);
    if (put != Put::kShown) ReadAgain();
  });
  if (read && put == Put::kReplaced) diagnostics_.ui.ShowMessage(ReplacedMessage());
  return read;
}

bool ResultsView::HasNewerRows() const {
  qint64 newestShown = 0;
  const int key = rows_.ColumnIndex(QString::fromLatin1(kRowKey));
  rows_.Visit([&](const StoredRow& row) { newestShown = std::max(newestShown, row.At(key).integer); });
  const QString sql = QStringLiteral("SELECT MAX(RecordID) AS Newest FROM [Campaign Results] WHERE CampaignID = %1");
  try {
    const Recordset newest = Recordset::ReadAll(statements_.Shared().Driver().Execute(sql.arg(campaignId_)));
    return newest.Field(0).ToInt() > newestShown;
  } catch (const DatabaseError&) {
    return false;
  }
}

std::optional<bool> ResultsView::ShownFlag(qint64 recordId, const QString& column) const {
  const int key = rows_.ColumnIndex(QString::fromLatin1(kRowKey));
  const int flag = rows_.ColumnIndex(column);
  std::optional<bool> shown;
  rows_.Visit([&](const StoredRow& row) {
    if (row.At(key).integer == recordId) shown = row.At(flag).ToValue().ToBool();
  });
  return shown;
}

bool ResultsView::Refresh(const std::function<void()>& readRows) {
  counters_.UpdateCounters(campaignId_);
  if (!rows_.IsOpen()) return true;
  bool read = false;
  const auto requery = [this, &read, &readRows] {
    readRows();
    read = true;
    outOfDate_ = false;
  };
  try {
    if (refresh_)
      refresh_(requery);
    else
      requery();
  } catch (const DatabaseError& error) {
    statements_.ShowFailure(0, QStringLiteral("RefreshResults"), error);
  }
  if (read_) read_();
  return read;
}

void ResultsView::ReadAgain() {
  rows_.Requery();
  if (!kindsRead_) return;
  kinds_.Read(rows_, ReadTroubles());
  rows_.ArrangeAgain();  // the filter may depend on the kinds
}

ResultsView::Put ResultsView::PutRows(const std::vector<qint64>& changed) {
  const QSet<qint64> keys(changed.begin(), changed.end());
  Recordset fresh;
  try {
    Procedure flags(statements_.Shared(), "proc_selp_Results_Flags");
    fresh = flags.Open({{"@CampaignID", campaignId_}, {"@RecordIDs", KeyList(changed)}});
    if (fresh.RecordCount() < keys.size() && HasNewerRows()) return Put::kReplaced;
  } catch (const DatabaseError&) {
    return Put::kImpossible;  // reading all rows reports the failure
  }
  if (!PutFlags(fresh, keys)) return Put::kImpossible;
  if (kindsRead_) kinds_.ReadAgain(fresh, changed, ReadTroubles());
  rows_.ArrangeAgain();
  return Put::kShown;
}

/// Also drops rows that the database no longer has.
/// \return false when a row is missing in the recordset
bool ResultsView::PutFlags(const Recordset& fresh, QSet<qint64> changed) {
  QHash<qint64, qint64> position;
  for (qint64 row = 0; row < fresh.RecordCount(); ++row)
    position.insert(fresh.At(row, 0).integer, row);
  std::vector<int> columns;  // index in `rows_` for each column of `fresh`
  for (const Column& column : fresh.Columns())
    columns.push_back(rows_.ColumnIndex(column.name));
  const int key = rows_.ColumnIndex(QString::fromLatin1(kRowKey));
  rows_.Amend([&](AmendedRow& row) {
    const qint64 recordId = row.At(key).integer;
    if (!changed.remove(recordId)) return;
    const auto found = position.constFind(recordId);
    if (found == position.constEnd()) return row.Drop();
    for (std::size_t i = 1; i < columns.size(); ++i) {
      const Value value = fresh.At(*found, static_cast<int>(i)).ToValue();
      if (columns[i] >= 0 && row.At(columns[i]).ToValue() != value) row.Put(columns[i], value);
    }
  });
  return std::none_of(changed.begin(), changed.end(), [&](qint64 recordId) { return position.contains(recordId); });
}

Recordset ResultsView::ReadTroubles() {
  Recordset troubles;
  // A failure was reported. The other kinds are right without the troubles.
  (void)statements_.dbOpenRec(troubles, QStringLiteral("proc_selp_Send_Troubles (%1)").arg(campaignId_));
  return troubles;
}

const RowKinds& ResultsView::Kinds() {
  if (!kindsRead_) kinds_.Read(rows_, ReadTroubles());
  kindsRead_ = true;
  return kinds_;
}

void ResultsView::ReadAgainWith(const QString& sql, Recordset& rows) {
  rows.SetSource([&connection = statements_.Shared(), sql] { return connection.Driver().Execute(sql); });
}

bool ResultsView::FollowCampaign(int campaignId) {
  campaignId_ = campaignId;
  if (rows_.IsOpen()) ReadAgainWith(RowsOf(campaignId), rows_);
  return RefreshResults();
}

QString ResultsView::CountText() const {
  return QString::number(rows_.StoredCount()) + QLatin1String(" records ");
}

}  // namespace qbx
