// The catalogue of starting queries, their texts in both editions, and the lists of step 1.

#include "queries/query_catalogue.h"

#include <gtest/gtest.h>

#include "queries/query_panels.h"
#include "queries/query_sentence.h"
#include "settings/options.h"

namespace qbx {
namespace {

const QDate kToday(2026, 8, 31);

TEST(QueryCatalogue, TreeHasElevenNodesOnlyInTheBoatEdition) {
  for (const bool boat : {false, true}) {
    const std::vector<QueryNode> tree = QueryTree(boat);
    ASSERT_EQ(tree.size(), boat ? 11U : 10U);
    EXPECT_EQ(tree[0].text, "Customer specific Queries");
    EXPECT_EQ(tree[6].text, boat ? "Boat Specific Queries" : "Vehicle Specific Queries");
    EXPECT_EQ(tree[7].text, boat ? "All Boats" : "All Vehicles");
    EXPECT_EQ(tree[7].QueryKey(), "ALL VEHICLES");
    EXPECT_EQ(tree[9].text, "Based on Reminder Date");
    EXPECT_EQ(FindQueryNode(kSpecificEngines, boat).has_value(), boat);
  }
  EXPECT_FALSE(FindQueryNode(0, true) || FindQueryNode(-3, true));
}

TEST(QueryCatalogue, DescriptionsFollowTheEditionAndTheYear) {
  struct Case {
    const char* key;
    bool boat;
    const char* text;
  };
  for (const Case& c :
       {Case{"REMINDER DATE", false,
             "All vehicles with a specific Recall Date. e.g All Vehicles with an MOT Due date in December 2026."},
        Case{"REMINDER DATE", true, "All boats with a specific Recall Date."},
        Case{"SPECIFIC MAKES", false,
             "All vehicles which are of a specific Make. e.g All vehicles which are an Audi or BMW."},
        Case{"SPECIFIC MAKES", true, "All boats which are of a specific Make."},
        Case{"ALL VEHICLES", true, "All boats in the system (which have an associated customer)."},
        Case{"VEHICLE QUERY", true, "Boat Specific Queries"},
        Case{"SPECIFIC ENGINES", true, "All engines which are of a specific Make."},
        Case{"RECENT CUSTOMERS", false,
             "Recent Customers i.e Customers who have been invoiced recently. e.g All customers who have been in in "
             "the last 12 months."},
        Case{"SOMETHING ELSE", false, ""}})
    EXPECT_EQ(QueryDescription(c.key, c.boat, 2026), c.text) << c.key;
}

TEST(QueryCatalogue, RemindersAreNamedByTheOptions) {
  Options options;
  options.MOT_Reminder_Name = "NCT";
  options.Reminder3Name = "Cambelt";
  options.Reminder6Name = "Gas";
  EXPECT_EQ(ReminderList(options), QStringList({"NCT Reminder", "Service Reminder", "Recall 3: Cambelt",
                                                "Recall 4: ", "Recall 5: ", "Recall 6: Gas"}));
}

TEST(QueryCatalogue, MakesTextKeepsTypedEntriesBehindTheSelected) {
  const QStringList items = {"Audi", "BMW", "Ford"};
  EXPECT_EQ(RebuildMakesText("Trabant, ford", items, {"Audi", "Ford"}), "Audi, Ford, Trabant");
  EXPECT_EQ(RebuildMakesText("", items, {}), "");
  EXPECT_EQ(RebuildMakesText(" , BMW,,  Wartburg 353 ", items, {}), "Wartburg 353");

  QStringList typed;
  for (int i = 1; i <= 60; ++i)
    typed.append(QString("T%1").arg(i));
  const QStringList kept = RebuildMakesText(typed.join(','), items, {"BMW"}).split(", ");
  EXPECT_EQ(kept.size(), 51);
  EXPECT_EQ(kept.last(), "T50");
}

/// A letter for every visible panel.
QString Visible(const QueryPanels& panels) {
  QString letters;
  if (panels.fraDates) letters += 'D';
  if (panels.fraMakes) letters += 'M';
  if (panels.fraCriteria) letters += 'C';
  if (panels.fraReminder) letters += 'R';
  if (panels.fraOptionsText) letters += 'E';
  if (panels.fraPickStart) letters += 'P';
  return letters;
}

TEST(QueryPanels, EachQueryShowsItsPanels) {
  struct Case {
    const char* key;
    const char* visible;
    const char* datesCaption;
    const char* makes;
  };
  for (const Case& c :
       {Case{"ALL CUSTOMERS", "", "Date From/To", ""}, Case{"LAPSED CUSTOMERS", "DE", "Invoiced Date", ""},
        Case{"RECENT CUSTOMERS", "D", "Invoiced between", ""}, Case{"TOP CUSTOMERS", "DC", "Invoiced between", ""},
        Case{"BOTTOM CUSTOMERS", "DC", "Invoiced between", ""},
        Case{"SPECIFIC MAKES", "M", "Date From/To", "proc_sel_Makes_all (0)"},
        Case{"REMINDER DATE", "DR", "Recall Date Range", ""},
        Case{"SPECIFIC ENGINES", "M", "Date From/To", "proc_sel_Makes_all (5)"}}) {
    QueryOptions options;
    const QueryPanels panels = ShowQueryOptions(c.key, options, true, kToday);
    const bool engines = QString(c.key) == "SPECIFIC ENGINES";
    EXPECT_EQ(Visible(panels), c.visible) << c.key;
    EXPECT_EQ(panels.fraDatesCaption, c.datesCaption) << c.key;
    EXPECT_EQ(panels.lblCriteria, panels.fraCriteria ? "Records to return:" : "Criteria") << c.key;
    EXPECT_EQ(panels.fraMakesCaption, engines ? "Engines" : "Makes") << c.key;
    EXPECT_EQ(panels.mileageFilterVisible, !engines) << c.key;
    EXPECT_EQ(panels.makesListStatement.value_or(""), c.makes) << c.key;
    EXPECT_TRUE(panels.cmdNextEnabled) << c.key;
  }
}

TEST(QueryPanels, AGroupOffersNothingToRun) {
  QueryOptions options;
  for (const char* key : {"CUSTOMER QUERY", "VEHICLE QUERY", "SPECIFIC ENGINES", ""}) {
    const QueryPanels panels = ShowQueryOptions(key, options, false, kToday);
    EXPECT_FALSE(panels.cmdNextEnabled) << key;
    EXPECT_TRUE(panels.fraPickStart) << key;
    EXPECT_EQ(panels.lblQueryOptions, "Please select a Query to see the options that are available.");
    EXPECT_EQ(panels.lblInfo, "       Please select a Customer or Vehicle related query.");
  }
}

TEST(QueryPanels, LapsedFillsEmptyDatesOnly) {
  QueryOptions options;
  const QueryPanels panels = ShowQueryOptions("LAPSED CUSTOMERS", options, false, kToday);
  EXPECT_EQ(options.dteDate[0], kToday);
  EXPECT_EQ(options.dteDate[1], QDate(2026, 2, 28));
  EXPECT_EQ(panels.lblOptionsExample,
            "For Customers not seen in the last 6 months, set the Start to be 31/08/2026 and the Last Seen Start Date "
            "to be 28/02/2026");

  options.dteDate = {QDate(2020, 5, 1), QDate()};
  (void)ShowQueryOptions("LAPSED CUSTOMERS", options, false, kToday);
  EXPECT_EQ(options.dteDate[0], QDate(2020, 5, 1));
  EXPECT_FALSE(options.dteDate[1].isValid());

  options.dteDate = {QDate(), QDate(2021, 5, 1)};
  options.dteDateHasText[0] = true;
  (void)ShowQueryOptions("LAPSED CUSTOMERS", options, false, kToday);
  EXPECT_EQ(options.dteDate[1], QDate(2021, 5, 1));
}

TEST(QuerySelects, FollowsTheOptionsAsTheHostReadsThem) {
  QueryOptions given;
  given.dteDate = {QDate(2026, 8, 31), QDate(2026, 2, 28)};  // the host takes them in either order
  given.txtCriteria = "25";
  given.txtCriteriaStart = "11";
  given.txtMakes = "Audi,  {later},";
  given.cmbReminder = 1;
  struct Case {
    int query;
    bool boat;
    const char* text;
  };
  const auto selects = [](const QueryOptions& options, int query, bool boat) {
    return QuerySelects(query, options, {"MOT Reminder", "Service Reminder"}, boat, kToday);
  };
  for (
      const Case& c :
      {Case{
           kLapsedCustomers, false,
           "Customers with an invoice before 28/02/2026 and none from then to 31/08/2026; later invoices do not count."},
       Case{kRecentCustomers, false, "Customers with an invoice from 28/02/2026 to 31/08/2026, both days included."},
       Case{
           kBottomCustomers, false,
           "Customers 11 to 35 by the sum of their invoices from 28/02/2026 to 31/08/2026, lowest first. Only customers with an invoice then who may be contacted are ranked."},
       Case{
           kReminderDate, true,
           "Customers' boats whose date of \"Service Reminder\" lies from 28/02/2026 to 31/08/2026, both days included."},
       Case{kSpecificMakes, false, "Customers' vehicles of the make Audi or {later}."},
       Case{kSpecificEngines, false, ""}, Case{kVehicleGroup, false, ""}, Case{kNoQuery, false, ""}})
    EXPECT_EQ(selects(given, c.query, c.boat), c.text);

  QueryOptions open;
  open.txtCriteria = open.txtCriteriaStart = "1";
  EXPECT_EQ(selects(open, kTopCustomers, false).section('.', 0, 0),
            "Customer 1 by the sum of their invoices from 01/01/1990 to 31/08/2026, highest first");
  EXPECT_EQ(selects(open, kLapsedCustomers, false), "Needs two dates, both from 1990 on.");
}

}  // namespace
}  // namespace qbx
