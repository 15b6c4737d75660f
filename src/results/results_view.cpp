// The rows of the current campaign, as step 3 shows them.

#include "results/results_view.h"

#include "settings/options.h"
#include "settings/startup_values.h"

namespace qbx {
namespace {

QString RowsOf(int campaignId) {
  return QStringLiteral("proc_selp_Campaign_Results (%1)").arg(campaignId);
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
  // The rows of the same campaign stay; those of another one would pass for its own.
  if (!read && campaignId == campaignId_) return false;
  rows_ = std::move(rows);
  campaignId_ = campaignId;
  outOfDate_ = false;
  if (read_) read_();
  if (displayed_) displayed_();
  return read;
}

bool ResultsView::RefreshResults() {
  counters_.UpdateCounters(campaignId_);
  if (!rows_.IsOpen()) return true;
  bool read = false;
  const auto requery = [this, &read] {
    rows_.Requery();
    read = true;
    outOfDate_ = false;
  };
  try {
    if (refresh_)
      refresh_(requery);
    else
      requery();
  } catch (const DatabaseError& error) {
    diagnostics_.errors.ShowError(0, QStringLiteral("RefreshResults"), error.Description());
  }
  if (read_) read_();
  return read;
}

void ResultsView::ReadAgainWith(const QString& sql, Recordset& rows) {
  rows.SetSource([&connection = statements_.Shared(), sql] { return connection.Driver().Execute(sql); });
}

bool ResultsView::FollowCampaign(int campaignId) {
  campaignId_ = campaignId;
  if (rows_.IsOpen()) ReadAgainWith(RowsOf(campaignId), rows_);
  return RefreshResults();
}

void ResultsView::RowDeleted() {
  counters_.UpdateCounters(campaignId_);
  if (read_) read_();
}

QString ResultsView::CountText() const {
  return QString::number(rows_.RecordCount()) + QLatin1String(" records ");
}

}  // namespace qbx
