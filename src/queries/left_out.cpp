#include "queries/left_out.h"

#include <algorithm>

#include "queries/filter_table.h"
#include "queries/starting_queries.h"

namespace qbx {

namespace {

constexpr int kOptedOut = -1;

/// The filter "No Marketing" lets customers in; all others leave rows out.
bool Narrows(const FilterRow& row, const Filters& filters) {
  return row.index != kFilterNoMarketing && filters.Ticked(row.index);
}

qint64 RowsOfReason(const ReasonCounts& reasons, int reason) {
  const auto found = reasons.find(reason);
  return found == reasons.end() ? 0 : found->second;
}

QString Sentence(const QString& beginning, const QStringList& parts) {
  return parts.isEmpty() ? QString() : beginning + parts.join(QLatin1String(", ")) + u'.';
}

QString BeforeText(const LeftOutBefore& before) {
  QStringList parts;
  if (before.optedOut > 0) parts += QStringLiteral("%1 opted out").arg(before.optedOut);
  if (before.noMarketing > 0) parts += QStringLiteral("%1 No Marketing").arg(before.noMarketing);
  return Sentence(QStringLiteral("Left out before: "), parts);
}

/// The text about the difference between the rows of step 1 and those before the filters.
QString CandidatesText(const LeftOut& leftOut, bool boatEdition) {
  const qint64 candidates = leftOut.after->candidates;
  if (leftOut.after->ofVehicles) return FilterWording("Their vehicles: %1.", boatEdition).arg(candidates);
  const qint64 more = leftOut.before ? candidates - leftOut.before->found : 0;
  return more > 0 ? QStringLiteral("%1 more with No Marketing.").arg(more) : QString();
}

QString AfterText(const LeftOut& leftOut, bool boatEdition) {
  QStringList parts;
  for (const LeftOutAfter::Filter& filter : leftOut.after->filters)
    parts +=
        QStringLiteral("%1 by %2").arg(filter.rows).arg(FilterWording(FilterRows()[filter.filter].name, boatEdition));
  if (leftOut.after->withoutConsent > 0)
    parts += QStringLiteral("%1 without consent").arg(leftOut.after->withoutConsent);
  QStringList sentences = {CandidatesText(leftOut, boatEdition), Sentence(QStringLiteral("Left out: "), parts)};
  sentences.removeAll(QString());
  return sentences.join(u' ');
}

}  // namespace

bool AnyFilterNarrows(const Filters& filters) {
  return std::ranges::any_of(FilterRows(), [&filters](const FilterRow& row) { return Narrows(row, filters); });
}

ProcedureCall BuildLeftOutCall(QueryPass pass, const QueryRequest& request, const QueryOptions& options,
                               const Filters& filters) {
  ProcedureCall call = BuildQueryCall(pass, request, options, filters);
  call.procedure = QStringLiteral("proc_sel_Left_Out");
  const RowsOf rows = RowsSelected(pass, request.CampaignTypeID, filters).value_or(RowsOf::kCustomers);
  call.parameters.push_back({QStringLiteral("@RowsOf"), static_cast<int>(rows)});
  call.parameters.push_back({QStringLiteral("@Filters"), pass == QueryPass::kFilter && AnyFilterNarrows(filters)});
  return call;
}

ReasonCounts ReadReasons(Recordset rows) {
  ReasonCounts counts;
  for (; !rows.Eof(); rows.MoveNext()) {
    const Value reason = rows.Field(QStringLiteral("Reason"));
    if (!reason.IsNull()) counts[static_cast<int>(reason.ToInt())] = rows.Field(QStringLiteral("Records")).ToInt();
  }
  return counts;
}

bool OneCountForBothPasses(int query, const Filters& filters) {
  return RowsSelected(QueryPass::kStart, query, filters) == RowsSelected(QueryPass::kFilter, query, filters) &&
         !filters.Ticked(kFilterNoMarketing);
}

LeftOutBefore MakeLeftOutBefore(const ReasonCounts& reasons, qint64 found) {
  return {.found = found,
          .optedOut = RowsOfReason(reasons, kOptedOut),
          .noMarketing = RowsOfReason(reasons, kFilterNoMarketing)};
}

LeftOutAfter MakeLeftOutAfter(const ReasonCounts& reasons, qint64 selected, int query, const Filters& filters) {
  LeftOutAfter after{.candidates = selected,
                     .ofVehicles = RowsSelected(QueryPass::kStart, query, filters) !=
                                   RowsSelected(QueryPass::kFilter, query, filters)};
  for (const FilterRow& row : FilterRows()) {
    if (!Narrows(row, filters)) continue;
    const qint64 records = RowsOfReason(reasons, static_cast<int>(row.index));
    after.candidates += records;
    after.filters.push_back({.filter = row.index, .rows = records});
  }
  return after;
}

std::vector<CountedRows> CountLeftOut(const LeftOut& leftOut, bool boatEdition) {
  std::vector<CountedRows> counted;
  const auto add = [&counted](const QString& what, qint64 rows) {
    if (rows > 0) counted.push_back({what, rows});
  };
  if (leftOut.before) {
    add(QStringLiteral("Opted out"), leftOut.before->optedOut);
    add(QStringLiteral("No Marketing"), leftOut.before->noMarketing);
  }
  if (!leftOut.after) return counted;
  for (const LeftOutAfter::Filter& filter : leftOut.after->filters)
    add(QLatin1String("By ") + FilterWording(FilterRows()[filter.filter].name, boatEdition), filter.rows);
  add(QStringLiteral("Without consent"), leftOut.after->withoutConsent);
  return counted;
}

QStringList LeftOutTexts(const LeftOut& leftOut, bool boatEdition) {
  return {leftOut.before ? BeforeText(*leftOut.before) : QString(),
          leftOut.after ? AfterText(leftOut, boatEdition) : QString()};
}

}  // namespace qbx
