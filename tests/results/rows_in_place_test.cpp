// Rows that were changed are put into what is shown: the same as reading all again.

#include <numeric>

#include "results/results_view.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

/// What a view shows: cells in order, kinds and their numbers.
QStringList Shown(ResultsView& view) {
  QStringList lines;
  const RowKinds& kinds = view.Kinds();
  for (qint64 row = 0; row < view.Rows().RecordCount(); ++row) {
    QStringList cells;
    for (int column = 0; column < static_cast<int>(view.Rows().Columns().size()); ++column)
      cells += view.Rows().At(row, column).ToValue().ToText();
    for (int kind = 0; kind < kRowKinds; ++kind)
      cells += QString::number(kinds.Is(view.Rows().At(row, 0).integer, static_cast<RowKind>(kind)));
    lines += cells.join(u'|');
  }
  for (int kind = 0; kind < kRowKinds; ++kind)
    lines += RowKindNames()[kind] + QString::number(kinds.Count(static_cast<RowKind>(kind)));
  return lines;
}

TEST(RowsInPlace, AreWhatReadingAllAgainGives) {
  test::EmbeddedHost host;
  QStringList rows;
  for (int i = 1; i <= 600; ++i)
    rows += QString("(5, %1, 'Name %2', '+44 7700 9%3', %4, %5)")
                .arg(i)
                .arg(i * 7 % 13)
                .arg(i % 200 + 10000)
                .arg(i % 2)
                .arg(i % 3 == 0 ? 1 : 0);
  host.Run("INSERT INTO [Campaign Results] (CampaignID, Customer, Lastname, Mobile, Send_SMS, Send_Email) VALUES " +
           rows.join(", "));
  host.Run(
      "INSERT INTO Send_Journal (RecordID, Channel, State, CampaignID, Changed) VALUES (3, 1, 0, 5, '2026-01-01'), (4, 2, 2, 5, '2026-01-01')");
  Counters counters(host.statements);
  ResultsView view(host.statements, counters, host.diagnostics);
  ResultsView again(host.statements, counters, host.diagnostics);
  ASSERT_TRUE(view.DisplayResults(5));
  EXPECT_EQ(view.Kinds().Count(RowKind::kSameMobile), 600);
  EXPECT_EQ(view.Kinds().Count(RowKind::kNothing), 200);
  const auto same = [&](const std::vector<qint64>& changed, const QString& sql) {
    for (const RowKind kind : {RowKind::kAll, RowKind::kText, RowKind::kInDoubt, RowKind::kSameMobile}) {
      for (const char* sorted : {"", "Send_SMS", "Lastname", "Processed_Date"}) {
        const int column = view.Rows().ColumnIndex(sorted);
        view.Rows().Filter(view.Kinds().Filter(kind, view.Rows()));
        view.Rows().Sort(column, true);
        host.Run(sql);
        ASSERT_TRUE(view.RefreshRows(changed));
        ASSERT_TRUE(again.DisplayResults(5));
        again.Rows().Filter(again.Kinds().Filter(kind, again.Rows()));
        again.Rows().Sort(column, true);
        ASSERT_EQ(Shown(view), Shown(again)) << sorted << sql.toStdString();
      }
    }
  };
  same({7}, "UPDATE [Campaign Results] SET Send_SMS = 1 - Send_SMS WHERE RecordID = 7");
  same({3, 8}, "UPDATE [Campaign Results] SET Processed = 1 - Processed WHERE RecordID IN (3, 8)");
  std::vector<qint64> many(400);
  std::iota(many.begin(), many.end(), 100);
  same(many,
       "UPDATE [Campaign Results] SET Send_SMS = 1 - Send_SMS, Send_Letter = 1 WHERE RecordID BETWEEN 100 AND 499");
  same({3, 4, 250, 9999}, "DELETE FROM [Campaign Results] WHERE RecordID IN (3, 4, 250)");
  same(
      {601},
      "INSERT INTO [Campaign Results] (RecordID, CampaignID, Mobile) SELECT 601, 5, '07700 910001' WHERE NOT EXISTS (SELECT 1 FROM [Campaign Results] WHERE RecordID = 601)");
  EXPECT_TRUE(host.ui.Messages().empty());
}

}  // namespace
}  // namespace qbx
