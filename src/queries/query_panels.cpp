// Which option panels of step 1 a query shows, with their captions, hints and defaults.

#include "queries/query_panels.h"

#include "queries/query_catalogue.h"

namespace qbx {

namespace {

constexpr int kLapsedMonths = 6;
constexpr char kDateFormat[] = "dd/MM/yyyy";

void ShowDates(QueryPanels& panels, const QString& caption) {
  panels.fraDates = true;
  panels.fraDatesCaption = caption;
}

void ShowRanking(QueryPanels& panels) {
  panels.fraCriteria = true;
  panels.lblCriteria = QStringLiteral("Records to return:");
  ShowDates(panels, QStringLiteral("Invoiced between"));
}

void ShowLapsed(QueryPanels& panels, QueryOptions& options, const QDate& today) {
  const QDate start = today.addMonths(-kLapsedMonths);
  ShowDates(panels, QStringLiteral("Invoiced Date"));
  panels.lblDateFrom = QStringLiteral("Last Seen Start:");
  panels.lblDateTo = QStringLiteral("Last Seen End:");
  panels.fraOptionsText = true;
  const QString format = QString::fromLatin1(kDateFormat);
  panels.lblOptionsExample = QLatin1String("For Customers not seen in the last 6 months, set the Start to be ") +
                             today.toString(format) + QLatin1String(" and the Last Seen Start Date to be ") +
                             start.toString(format);
  if (!options.dteDate[0].isValid() && !options.dteDateHasText[0]) options.dteDate = {today, start};
}

void ShowPanelsOf(int query, QueryPanels& panels, QueryOptions& options, const QDate& today) {
  switch (query) {
    case kTopCustomers:
      panels.lblQueryOptions =
          QStringLiteral("Specify how many Top customers and an optional date range e.g Top 25 over last 12 months.");
      return ShowRanking(panels);
    case kBottomCustomers:
      panels.lblQueryOptions = QStringLiteral(
          "Specify how many customers and an optional date range e.g Least spending 25 over last 12 months.");
      return ShowRanking(panels);
    case kRecentCustomers:
      panels.lblQueryOptions = QStringLiteral("Customers seen between these dates.");
      return ShowDates(panels, QStringLiteral("Invoiced between"));
    case kLapsedCustomers:
      panels.lblQueryOptions = QStringLiteral("Customers not seen since Date 1, ignoring any records after Date 2.");
      return ShowLapsed(panels, options, today);
    case kSpecificMakes:
      panels.lblQueryOptions = QStringLiteral("Choose the Makes to include in the query.");
      panels.fraMakes = true;
      return;
    case kSpecificEngines:
      panels.lblQueryOptions = QStringLiteral("Choose the Engines to include in the query.");
      panels.fraMakes = true;
      panels.fraMakesCaption = QStringLiteral("Engines");
      return;
    case kReminderDate:
      panels.lblQueryOptions = QStringLiteral("Choose the Reminder and the Recall Due Date Range.");
      panels.fraReminder = true;
      return ShowDates(panels, QStringLiteral("Recall Date Range"));
    default:
      panels.lblQueryOptions = QStringLiteral("No Options available. Please click Next to apply some Filters.");
  }
}

}  // namespace

QString OptionsText(const QString& text) {
  return text.isEmpty() ? QStringLiteral("Please select a Query to see the options that are available.") : text;
}

QueryPanels NoQueryPanels() {
  QueryPanels panels;
  panels.txtQueryDesc = QStringLiteral("Please select a Query to see the description.");
  panels.lblQueryOptions = OptionsText({});
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
    panels.txtQueryDesc = QueryDescription(queryKey, boatEdition, today.year());
    if (IsGroupNode(node.index)) break;
    panels.makesListStatement = MakesListStatement(queryKey);
    panels.mileageFilterVisible = node.index != kSpecificEngines;
    panels.fraPickStart = false;
    panels.cmdNextEnabled = true;
    panels.lblInfo = QStringLiteral("       Please complete the Criteria on the right and then click Next >");
    ShowPanelsOf(node.index, panels, options, today);
    break;
  }
  return panels;
}

}  // namespace qbx
