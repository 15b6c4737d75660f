// Status box, error report and numbered messages.

#include <gtest/gtest.h>

#include "diagnostics/error_report.h"
#include "diagnostics/message_catalogue.h"
#include "diagnostics/status_box.h"
#include "support/test_services.h"

namespace qbx {
namespace {

TEST(StatusBox, AddsDotsToPlainTexts) {
  const struct {
    const char* text;
    int style;
    const char* shown;
    bool highlighted;
  } cases[] = {
      {"Processing", 0, "Processing...", false},      {"Done.", 0, "Done.", false}, {"Wait...", 0, "Wait...", false},
      {"Send Complete!", 12, "Send Complete!", true}, {"Plain", 3, "Plain", false},
  };
  for (const auto& each : cases) {
    test::ScriptedUi ui;
    StatusBox box(ui);
    box.ShowStatus(each.text, true, each.style);
    ASSERT_EQ(ui.Statuses().size(), 1U);
    EXPECT_EQ(ui.Statuses()[0].message, each.shown);
    EXPECT_EQ(ui.Statuses()[0].highlighted, each.highlighted) << each.text;
    EXPECT_TRUE(ui.Statuses()[0].showCancel);
    EXPECT_TRUE(box.Visible());
    EXPECT_TRUE(ui.Busy());
    EXPECT_EQ(ui.PumpCount(), 1);
    EXPECT_EQ(ui.PausedFor(), 160);
    box.ShowStatus({});
    EXPECT_FALSE(ui.StatusVisible() || ui.Busy() || box.Visible());
  }
}

struct ErrorReportTest : testing::Test, test::TestServices {};

TEST_F(ErrorReportTest, LogsRecordsAndShows) {
  QStringList events;
  errors.SetEventWriter([&](int type, int table, const QString& key, const QString& details) {
    EXPECT_FALSE(ui.StatusVisible()) << "the status box would cover the message";
    EXPECT_TRUE(ui.Messages().empty());
    events.append(QString("%1/%2/%3/%4").arg(type).arg(table).arg(key, details));
  });
  status.ShowStatus("Working");
  errors.ShowError(12, "ProcessQuery", "Overflow");
  EXPECT_EQ(Log(), QString("10:20:30  ERROR: Overflow.\rThe Location ID is 12. (in ProcessQuery)\r\n"));
  EXPECT_EQ(events, QStringList{"6/0/12/Overflow"});
  ASSERT_EQ(ui.Messages().size(), 1U);
  const Message& message = ui.Messages()[0];
  EXPECT_EQ(message.text,
            "An unexpected error occured.\r\rOverflow.\rThe Location ID is 12.\r\r"
            "Please contact QBX if you are unsure about this message.");
  EXPECT_EQ(message.title, "Error");
  EXPECT_EQ(message.icon, MessageIcon::kExclamation);
  EXPECT_FALSE(ui.Busy());
}

TEST_F(ErrorReportTest, AsksForARestartWhenSerious) {
  errors.ShowError(3, "Merge", "Out of memory.", true);
  EXPECT_EQ(ui.MessageTexts(), QStringList{"An unexpected error occured.\r\rThe Description is: Out of memory.\r"
                                           "The Location ID is 3.\r\r"
                                           "You should cancel any unsaved changes and restart the application."});
}

TEST(MessageCatalogue, FillsPlaceholders) {
  EXPECT_EQ(AppMessage(108, {"250"}),
            "Warning: There are 250 records to be selected - this may take some time.  Are you sure you "
            "want to continue?");
  EXPECT_TRUE(AppMessage(108).contains("<<%1>>"));
  EXPECT_EQ(AppMessage(999), "Message number 999 is missing.");
  EXPECT_EQ(AppMessage(5, {"unused"}), "Couldn't write new value.");
}

}  // namespace
}  // namespace qbx
