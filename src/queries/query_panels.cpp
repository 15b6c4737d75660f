#include "queries/query_panels.h"

#include "queries/query_catalogue.h"
#include "util/date_text.h"

namespace qbx {

namespace {

constexpr char kNextHint[] = "       Please complete the Criteria on the right and then click Next >";

void ShowDates(const OptionPanels& row, QueryPanels& panels) {
  panels.fraDates = true;
  panels.fraDatesCaption = QString::fromLatin1(row.dates);
  panels.lblDateFrom = QString::fromLatin1(row.from);
  panels.lblDateTo = QString::fromLatin1(row.to);
}

void ShowMakes(const MakesOption& makes, QueryPanels& panels) {
  panels.fraMakes = true;
  panels.fraMakesCaption = QString::fromLatin1(makes.caption);
}

void ShowExample(int months, QueryPanels& panels, QueryOptions& options, const QDate& today) {
  const QDate start = today.addMonths(-months);
  panels.fraOptionsText = true;
  const QString text = QStringLiteral(
      "For Customers not seen in the last %1 months, set the Start to be %2 and the Last Seen Start Date to be %3");
  panels.lblOptionsExample = text.arg(QString::number(months), DayText(today), DayText(start));
  if (!options.dteDate[0].isValid() && !options.dteDateHasText[0]) options.dteDate = {today, start};
}

/// Sets the description of a query, and the statement for its list of makes if it has one.
void SetQueryDescription(const StartingQuery& query, bool boatEdition, int year, QueryPanels& panels) {
  panels.txtQueryDesc = QueryDescription(QString::fromLatin1(query.key).toUpper(), boatEdition, year);
  if (query.panels.makes)
    panels.makesListStatement = QStringLiteral("proc_sel_Makes_all (%1)").arg(query.panels.makes->kind);
}

void SetOptionsText(const QString& text, QueryPanels& panels) {
  panels.lblQueryOptions =
      text.isEmpty() ? QStringLiteral("Please select a Query to see the options that are available.") : text;
}

void ShowPanelsOf(const StartingQuery& query, QueryPanels& panels, QueryOptions& options, const QDate& today) {
  const OptionPanels& row = query.panels;
  SetOptionsText(QString::fromLatin1(row.text), panels);
  panels.fraReminder = row.reminder;
  panels.mileageFilterVisible = query.mileageFilter;
  if (row.ranking) {
    panels.fraCriteria = true;
    panels.lblCriteria = QStringLiteral("Records to return:");
  }
  if (row.dates != nullptr) ShowDates(row, panels);
  if (row.makes) ShowMakes(*row.makes, panels);
  if (row.exampleMonths > 0) ShowExample(row.exampleMonths, panels, options, today);
}

}  // namespace

QueryPanels NoQueryPanels() {
  QueryPanels panels;
  panels.txtQueryDesc = QStringLiteral("Please select a Query to see the description.");
  SetOptionsText({}, panels);
  panels.lblInfo = QStringLiteral("       Please select a Customer or Vehicle related query.");
  panels.lblCriteria = QStringLiteral("Criteria");
  panels.fraDatesCaption = QStringLiteral("Date From/To");
  panels.lblDateFrom = QStringLiteral("From:");
  panels.lblDateTo = QStringLiteral("To:");
  panels.fraMakesCaption = QStringLiteral("Makes");
  return panels;
}

QueryPanels ShowQueryOptions(const QString& queryKey, QueryOptions& options, bool boatEdition, const QDate& today) {
  QueryPanels panels = NoQueryPanels();
  for (const QueryNode& node : QueryTree(boatEdition)) {
    if (node.QueryKey() != queryKey) continue;
    const StartingQuery& query = *FindStartingQuery(node.index);
    SetQueryDescription(query, boatEdition, today.year(), panels);
    if (query.IsGroup()) break;
    panels.fraPickStart = false;
    panels.cmdNextEnabled = true;
    panels.lblInfo = QString::fromLatin1(kNextHint);
    ShowPanelsOf(query, panels, options, today);
    break;
  }
  return panels;
}

}  // namespace qbx
