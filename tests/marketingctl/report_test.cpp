// Reports as PDF files, through the program alone.

#include <gtest/gtest.h>

#include "garage.h"

namespace qbx::test {

TEST(MarketingCtlReport, WritesAPdfFileAndSaysOnlyThat) {
  qunsetenv("XDG_RUNTIME_DIR");
  const Garage garage;
  const QString id = garage.MakeCampaign();
  const QString pdf = garage.Folder().Write("list.pdf", "older");
  const CtlResult result =
      garage.Run("report CampaignResults.rpt --pdf %1 --campaign %2 --from month-start --to today", {pdf, id});
  EXPECT_EQ(result.code, 0);
  EXPECT_TRUE(result.err.isEmpty()) << result.err.constData();
  EXPECT_EQ(Text(result.Object(), "file"), pdf);
  EXPECT_GE(Number(result.Object(), "pages"), 1);
  EXPECT_TRUE(garage.Folder().Read("list.pdf").startsWith("%PDF-"));
  EXPECT_TRUE(garage.Folder().Read("Reports/CampaignResults.rpt").contains("<report"))
      << "the definition is where people can change it";

  const QString damaged = garage.Folder().Write("damaged.rpt", "<report>\n<page/><movie/></report>");
  const QString writes = garage.Folder().Write(
      "writes.rpt", "<report version='1'><page/>\n<query name='Q'>DELETE FROM [Campaign Results]</query></report>");
  const std::tuple<const char*, QString, const char*, int> refusals[] = {
      {"report None.rpt --pdf %2 --campaign 1", {}, "a file is missing", 1},
      {"report %1 --pdf %2", damaged, "damaged.rpt, line ", 1},
      {"report %1 --pdf %2", writes, "writes.rpt, line 2: The rows of a report must come from one SELECT.", 1},
      {"report CampaignResults.rpt --pdf %2 --campaign 999", {}, "Campaign not found!", 1},
      {"report CampaignResults.rpt --pdf /no/such/folder/x.pdf --campaign 1", {}, "PrintReport", 1},
      {"report CampaignResults.rpt", {}, "--pdf", 2},
  };
  for (const auto& [line, file, says, code] : refusals) {
    const CtlResult refused = garage.Run(line, {file, garage.Folder().File("none.pdf")});
    EXPECT_EQ(refused.code, code) << line;
    EXPECT_TRUE(refused.err.contains(says)) << line << ": " << refused.err.constData();
    EXPECT_FALSE(refused.Error().isEmpty()) << line;
  }
  EXPECT_FALSE(garage.Folder().Names().contains("none.pdf"));
}

TEST(MarketingCtlExport, WritesTheColumnsOfTheGridAndAnEvent) {
  const Garage garage;
  const QString id = garage.MakeCampaign();
  const QString csv = garage.Folder().File("rows.csv");
  const QJsonValue done = garage.Done("export %1 --csv %2 --no-headings", {id, csv});
  EXPECT_EQ(Number(done, "rows"), garage.Rows("results %1", {id}).size());
  const QByteArray text = garage.Folder().Read("rows.csv");
  EXPECT_EQ(text.count("\"\r\n"), Number(done, "rows"));
  EXPECT_EQ(text.left(text.indexOf("\"\r\n")).count("\",\""), Number(done, "columns") - 1);
  EXPECT_TRUE(garage.Run("log").out.contains("EXPORT"));
  EXPECT_EQ(garage.Run("export %1 --csv %2 --xlsx %2", {id, csv}).code, 2);
  EXPECT_EQ(garage.Done("export %1 --xls %2", {id, csv})[u"rows"], done[u"rows"]);
  EXPECT_TRUE(garage.Folder().Read("rows.csv").startsWith("\xD0\xCF\x11\xE0"));
}

}  // namespace qbx::test
