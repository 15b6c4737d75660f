// The catalogue of starting queries, their texts in both editions, and the lists of step 1.

#include "queries/query_catalogue.h"

#include <gtest/gtest.h>

#include "queries/query_panels.h"
#include "settings/options.h"

namespace qbx {
namespace {

const QDate kToday(2026, 8, 31);

TEST(QueryCatalogue, TreeHasElevenNodesOnlyInTheBoatEdition) {
  struct Case {
    bool boat;
    size_t nodes;
    const char* group;
    const char* all;
  };
  for (const Case& c : {Case{false, 10, "Vehicle Specific Queries", "All Vehicles"},
                        Case{true, 11, "Boat Specific Queries", "All Boats"}}) {
    const std::vector<QueryNode> tree = QueryTree(c.boat);
    ASSERT_EQ(tree.size(), c.nodes);
    for (size_t i = 0; i < tree.size(); ++i)
      EXPECT_EQ(tree[i].index, static_cast<int>(i) + 1);
    EXPECT_EQ(tree[0].text, "Customer specific Queries");
    EXPECT_EQ(tree[6].text, c.group);
    EXPECT_EQ(tree[7].text, c.all);
    EXPECT_EQ(tree[7].QueryKey(), "ALL VEHICLES");
    EXPECT_EQ(tree[9].text, "Based on Reminder Date");
    EXPECT_EQ(FindQueryNode(kSpecificEngines, c.boat).has_value(), c.boat);
  }
  EXPECT_FALSE(FindQueryNode(0, true));
  EXPECT_FALSE(FindQueryNode(-3, true));
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

TEST(QueryPanels, EachQueryShowsItsPanels) {
  struct Case {
    const char* key;
    bool dates, makes, criteria, reminder, example;
    const char* datesCaption;
  };
  for (const Case& c : {Case{"ALL CUSTOMERS", false, false, false, false, false, "Date From/To"},
                        Case{"LAPSED CUSTOMERS", true, false, false, false, true, "Invoiced Date"},
                        Case{"RECENT CUSTOMERS", true, false, false, false, false, "Invoiced between"},
                        Case{"TOP CUSTOMERS", true, false, true, false, false, "Invoiced between"},
                        Case{"BOTTOM CUSTOMERS", true, false, true, false, false, "Invoiced between"},
                        Case{"ALL VEHICLES", false, false, false, false, false, "Date From/To"},
                        Case{"SPECIFIC MAKES", false, true, false, false, false, "Date From/To"},
                        Case{"REMINDER DATE", true, false, false, true, false, "Recall Date Range"},
                        Case{"SPECIFIC ENGINES", false, true, false, false, false, "Date From/To"}}) {
    QueryOptions options;
    const QueryPanels panels = ShowQueryOptions(c.key, options, true, kToday);
    const bool engines = QString(c.key) == "SPECIFIC ENGINES";
    EXPECT_EQ(panels.fraDates, c.dates) << c.key;
    EXPECT_EQ(panels.fraMakes, c.makes) << c.key;
    EXPECT_EQ(panels.fraCriteria, c.criteria) << c.key;
    EXPECT_EQ(panels.fraReminder, c.reminder) << c.key;
    EXPECT_EQ(panels.fraOptionsText, c.example) << c.key;
    EXPECT_EQ(panels.fraDatesCaption, c.datesCaption) << c.key;
    EXPECT_EQ(panels.lblCriteria, c.criteria ? "Records to return:" : "Criteria") << c.key;
    EXPECT_EQ(panels.fraMakesCaption, engines ? "Engines" : "Makes") << c.key;
    EXPECT_EQ(panels.mileageFilterVisible, !engines) << c.key;
    EXPECT_EQ(panels.makesListStatement.value_or(""), engines   ? "proc_sel_Makes_all (5)"
                                                      : c.makes ? "proc_sel_Makes_all (0)"
                                                                : "");
    EXPECT_TRUE(panels.cmdNextEnabled && !panels.fraPickStart) << c.key;
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
}

}  // namespace
}  // namespace qbx
