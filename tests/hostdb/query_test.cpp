// The selections for campaigns, on a garage small enough to see the answer.

#include "support/embedded_host.h"

namespace qbx {
namespace {

constexpr const char* kGarage = R"sql(
INSERT INTO Customer_Types VALUES (1, 'Retail'), (2, 'Trade');
INSERT INTO Enquiry_Sources VALUES (1, 'Radio'), (2, 'Passing By');
INSERT INTO Customers (Customer, Title, Firstname, Lastname, Company, Contact, Address, Postcode, Customer_Type_ID, Enquiry_Source_ID,
  No_Marketing, Consent_Response) VALUES
  (1, 'Mr', 'Abel', 'Hartley', 'Hartley Ltd', NULL, '14 Orchard Row', 'MB4 2QT', 2, 1, 0, 1),
  (2, 'Mrs', 'Beth', 'Jones', NULL, 'Bethy', NULL, NULL, 1, 2, 0, 0),
  (3, NULL, 'Carl', 'Shah', NULL, ' ', NULL, NULL, 1, NULL, 0, NULL),
  (4, 'Ms', 'Dora', NULL, NULL, NULL, NULL, NULL, NULL, NULL, 0, 1),
  (5, NULL, NULL, NULL, 'Evan Ltd', NULL, NULL, NULL, 2, NULL, 0, 1),
  (6, 'Mr', 'Fern', 'Hill', NULL, NULL, NULL, NULL, 1, NULL, 0, 1),
  (7, 'Mr', 'Gale', 'Wood', NULL, NULL, NULL, NULL, 1, NULL, 1, 1),
  (8, 'Mr', 'Hugo', 'King', NULL, NULL, NULL, NULL, 1, NULL, 0, 2),
  (9, 'Ms', 'Iris', 'Ward', NULL, NULL, NULL, NULL, 1, NULL, 0, NULL);
INSERT INTO Services (RecordID, Record_Type, Invoice_Date, Customer, Total) VALUES
  (1, 0, '2023-05-01', 1, 100), (2, 0, '2023-05-01', 2, 100), (3, 0, '2024-03-04', 2, 10.3), (4, 0, '2023-05-01', 3, 200),
  (5, 0, '2025-09-04 14:30:00', 3, 10), (6, 0, '2023-05-01', 4, 50.1), (7, 0, '2025-09-05', 4, 60.2), (8, 0, '2024-06-01', 5, 500),
  (9, 1, '2023-05-01', 6, 7000), (10, 1, '2024-06-01', 6, 7000), (11, 0, '2023-05-01', 7, 9999), (12, 0, '2023-05-01', 8, 9999);
INSERT INTO Vehicles (VehicleID, Vehicle, Customer, Make, Model, Year, Last_Mileage, Recall_Date1, Recall_Date2) VALUES
  (1, 'D', 5, 'Alfa Romeo', '100%_GT', NULL, 1000, NULL, NULL), (2, 'A', 1, 'Ford', 'Fiesta', 2010, 60000, '2026-04-01', NULL),
  (3, 'B', 1, 'AUDI', 'A4', 2015, 80000, '2026-05-05', '2026-04-10'), (4, 'C', 2, 'Audi', 'A3', 2016, NULL, '2026-03-04', NULL),
  (5, 'E', 7, 'Ford', 'Focus', 2014, 70000, '2026-03-20', NULL), (6, 'F', NULL, 'Ford', 'Ka', 2012, 50000, '2026-03-20', NULL);
INSERT INTO Engines (EngineID, Vehicle, Customer, Make, Model, Year, Last_Mileage) VALUES
  (1, 'SSR 1', 1, 'Yanmar', '1GM10', 2009, 300), (2, 'SSR 1', 1, 'Nanni', 'N2.14', 2012, 40), (3, 'SSR 2', 7, 'Yanmar', '2YM15', 2015, 10);
)sql";

class Queries : public ::testing::Test, public test::EmbeddedHost {
 protected:
  using EmbeddedHost::Run;

  Queries() { Run(QString::fromUtf8(kGarage)); }

  /// The column of every row that a selection returned, in its order.
  std::string Select(const char* procedure, const char* parameters, const char* column) {
    Recordset rows = Run(QString("proc_Marketing_AddAll%1 @CampaignID = -3, @UserID = 'TESTER'%2")
                             .arg(procedure, QString::fromUtf8(parameters)));
    QStringList found;
    for (; !rows.Eof(); rows.MoveNext())
      found += rows.Field(QLatin1String(column)).ToText();
    return found.join(QLatin1Char(' ')).toStdString();
  }
};

struct Case {
  const char* parameters;
  const char* expected;
};

TEST_F(Queries, Customers) {
#define WINDOW ", @FromDate = '2024-03-04', @ToDate = '2025-09-04'"
#define TURNED ", @FromDate = '2025-09-04', @ToDate = '2024-03-04'"
  constexpr Case kCases[] = {
      {"", "1 2 3 4 5 6 9"},
      {", @FromDate = '2024-03-04', @ToDate = '2024-03-04'", "1 2 3 4 5 6 9"},
      {", @IgnoreMarketingSwitch = 1", "1 2 3 4 5 6 7 9"},
      {", @IncludeOptedOut = 1", "1 2 3 4 5 6 8 9"},
      // Lapsed: both ends belong to the window, what comes after it does not count, an estimate is no invoice.
      {", @Lapsed = 1" WINDOW, "1 4"},
      {", @Lapsed = 1" TURNED, "1 4"},
      {", @Lapsed = 1, @IgnoreMarketingSwitch = 1, @IncludeOptedOut = 1" WINDOW, "1 4 7 8"},
      {", @Lapsed = 1", ""},
      {", @Recent = 1" WINDOW, "2 3 5"},
      {", @Recent = 1" TURNED, "2 3 5"},
      {", @Recent = 1, @FromDate = '2025-09-05', @ToDate = ''", "4"},
      // The ranking: ties by key, only customers who may be contacted, filters afterwards.
      {", @Top = 1, @Criteria = 4, @CriteriaStart = 1", "5 3 2 4"},
      {", @Top = 1, @Criteria = 2, @CriteriaStart = 2", "3 2"},
      {", @Top = 1, @Criteria = 9, @CriteriaStart = 5", "1"},
      {", @Top = 1, @Criteria = 2, @CriteriaStart = 1, @Turnover = 1" WINDOW, "5 2"},
      {", @Top = 1, @Criteria = 0", ""},
      {", @Bottom = 1, @Criteria = 2, @CriteriaStart = 1, @FromDate = '2023-05-01', @ToDate = '2023-05-01'", "4 1"},
      {", @Bottom = 1, @Criteria = 3, @CriteriaStart = 1, @FromDate = '2023-05-01', @ToDate = '2023-05-01'", "4 1 2"},
      {", @Top = 1, @Criteria = 2, @CriteriaStart = 1, @UseCustType = 1, @WhenCustType = 0, @ValueCustType = 'trade'",
       "5"},
      {", @Top = 1, @Criteria = 2, @CriteriaStart = 1, @IgnoreMarketingSwitch = 1", "7 5"},
      {", @UseCustType = 1, @WhenCustType = 0, @ValueCustType = 'TRADE'", "1 5"},
      {", @UseCustType = 1, @WhenCustType = 1, @ValueCustType = 'Trade'", "2 3 4 6 9"},
      {", @UseCustType = 1, @WhenCustType = -1, @ValueCustType = 'Trade'", "1 2 3 4 5 6 9"},
      {", @UseCustType = 0, @WhenCustType = 0, @ValueCustType = 'Trade'", "1 2 3 4 5 6 9"},
      {", @UseCustType = 1, @WhenCustType = 0, @ValueCustType = ''", "4"},
      {", @UseEnquirySource = 1, @WhenEnquirySource = 0, @ValueEnquirySource = 'Radio'", "1"},
      {", @UseEnquirySource = 1, @WhenEnquirySource = 1, @ValueEnquirySource = 'Radio'", "2 3 4 5 6 9"},
  };
  for (const Case& c : kCases)
    EXPECT_EQ(Select("Customers", c.parameters, "Customer"), c.expected) << c.parameters;
}

TEST_F(Queries, Vehicles) {
  constexpr Case kCases[] = {
      {"", "A B C D"},
      {", @IgnoreMarketingSwitch = 1", "A B C D E"},
      {", @Makes = 'audi,Alfa Romeo'", "B C D"},
      {", @Makes = ' Ford , nothing,'", "A"},
      {", @Makes = 'Aud'", ""},
      {", @Makes = ''", ""},
      {", @Recall_ID = 1, @FromDate = '2026-03-04', @ToDate = '2026-04-01'", "A C"},
      {", @Recall_ID = 2, @FromDate = '2026-03-04', @ToDate = '2026-12-01'", "B"},
      {", @Recall_ID = 3, @FromDate = '2026-03-04', @ToDate = '2026-12-01'", ""},
      {", @FilterMileage = 1", "A B C D"},
      {", @FilterMileage = 1, @FromMileage = 60000", "B"},
      {", @FilterMileage = 1, @ToMileage = 60000", "D"},
      {", @FilterMileage = 1, @FromMileage = 60000, @ToMileage = 80000", "A B"},
      {", @FilterMileage = 0, @FromMileage = 60000", "A B C D"},
      // Year: is 2015, after 2015, before 2015, between 2010 and 2015, between 2010 and 2010.
      {", @FilterYear = 1, @FromYear = 2014, @ToYear = 2015", "B"},
      {", @FilterYear = 1, @FromYear = 2015", "C"},
      {", @FilterYear = 1, @ToYear = 2014", "A"},
      {", @FilterYear = 1, @ToYear = 2015", "A B"},
      {", @FilterYear = 1, @FromYear = 2009, @ToYear = 2016", "A B"},
      {", @FilterYear = 1, @FromYear = 2009, @ToYear = 2011", "A"},
      {", @FilterYear = 1", "A B C D"},
      {", @FilterModel = 1, @ValueModel = 'fi'", "A"},
      {", @FilterModel = 1, @ValueModel = ' A3 '", "C"},
      {", @FilterModel = 1, @ValueModel = '%'", "D"},
      {", @FilterModel = 1, @ValueModel = '_'", "D"},
      // The vehicles of selected customers.
      {", @Lapsed = 1, @FromDate = '2024-03-04', @ToDate = '2025-09-04', @FilterYear = 1, @ToYear = 2014", "A"},
      {", @Recent = 1, @FromDate = '2024-03-04', @ToDate = '2025-09-04'", "C D"},
      {", @Top = 1, @Criteria = 4, @CriteriaStart = 1, @FilterMileage = 1", "D C"},
      {", @UseCustType = 1, @WhenCustType = 0, @ValueCustType = 'trade'", "A B D"},
  };
  for (const Case& c : kCases)
    EXPECT_EQ(Select("Vehicles", c.parameters, "Vehicle"), c.expected) << c.parameters;
}

TEST_F(Queries, RowsSayWhoTheCustomerIs) {
  EXPECT_EQ(Select("Customers", "", "Contact"), "Mr Hartley Bethy Carl Shah Dora  Mr Hill Ms Ward");
  Run("proc_Marketing_AddAllVehicles @CampaignID = -3, @UserID = 'TESTER', @Recall_ID = 2, @FromDate = '2026-01-01'");
  EXPECT_EQ(
      Rows("SELECT Customer, Address, Cust_Type, Enquiry_Source, Last_Invoiced, Vehicle, Make, Year, Last_Mileage, "
           "Recall_Date, Marketing, Consent_Response, Send_SMS, Send_Email, Send_Letter, Processed, UserID, "
           "Created_Date, Can_Send_SMS FROM [Campaign Results]"),
      QStringList("1|Hartley Ltd\r14 Orchard Row\rMB4 "
                  "2QT|Trade|Radio|01/05/2023|B|AUDI|2015|80000|10/04/2026|True|1|False|False|False|False|"
                  "TESTER|04/03/2026 10:20:30|NULL"));
}

TEST_F(Queries, ReplaceTheRowsOfTheirCampaignOnly) {
  Run("proc_Marketing_AddAllCustomers @CampaignID = 8, @UserID = 'TESTER'");
  const Value last = Ask("SELECT max(RecordID) FROM [Campaign Results]");
  Run("DELETE FROM [Campaign Results] WHERE RecordID > 5");
  Run("proc_Marketing_AddAllVehicles @CampaignID = -3, @UserID = 'TESTER'");
  Recordset rows = Run("proc_Marketing_AddAllEngines @CampaignID = -3, @UserID = 'TESTER'");
  EXPECT_EQ(rows.Columns().front().name, "RecordID");
  EXPECT_GT(rows.Field(0).ToInt(), last.ToInt()) << "keys must never come back";
  for (const char* caption : {"SMS Opt-In", "Email Opt-In", "Letter Opt-In", "Can_Send_SMS", "Vehicle", "Last_Mileage"})
    EXPECT_GE(rows.ColumnIndex(caption), 0) << caption;
  EXPECT_EQ(Rows("SELECT CampaignID, COUNT(*) FROM [Campaign Results] GROUP BY CampaignID"),
            QStringList({"-3|2", "8|5"}));
}

}  // namespace
}  // namespace qbx
