#include "letters/letter_marks.h"

#include <QDir>
#include <QFileInfo>

#include "results/key_list.h"
#include "util/date_text.h"

namespace qbx {

namespace {

constexpr int kLongestPlace = 255;
constexpr QLatin1String kPrinterPrefix("printer:");

/// As it stands in the journal.
QString Stored(const ReportPlace& place) {
  if (place.kind == ReportPlace::Kind::kPrinter) return (kPrinterPrefix + place.name).left(kLongestPlace);
  // The end of a path says more than its beginning.
  return QFileInfo(place.name).absoluteFilePath().right(kLongestPlace);
}

ReportPlace PlaceOf(const QString& stored) {
  if (!stored.startsWith(kPrinterPrefix)) return {.name = stored};
  return {.kind = ReportPlace::Kind::kPrinter, .name = stored.sliced(kPrinterPrefix.size())};
}

/// What the letters were about to do.
QString Intent(const ReportPlace& place) {
  return place.kind == ReportPlace::Kind::kPrinter
             ? QStringLiteral("to be handed to the printer \"%1\"").arg(place.name)
             : QStringLiteral("to appear in %1").arg(QDir::toNativeSeparators(place.name));
}

/// What can be looked at to find out whether they did.
QString Evidence(const ReportPlace& place) {
  if (place.kind == ReportPlace::Kind::kPrinter) return QStringLiteral("Look at the printer and its queue.");
  const QFileInfo file(place.name);
  if (!file.exists()) return QStringLiteral("There is no such file now.");
  return QStringLiteral("A file of that name is there, written at %1; look at it.")
      .arg(SecondText(file.lastModified()));
}

}  // namespace

Message LettersInDoubtQuestion(const LettersInDoubt& doubt) {
  const auto count = static_cast<int>(doubt.rows.size());
  return {
      .text =
          QStringLiteral(
              "%1 %2 at %3, and %4 not marked. %5\r\rDid they go out? \"Yes\" marks them as sent, \"No\" makes them again, \"Cancel\" leaves everything as it is.")
              .arg(count == 1 ? QStringLiteral("1 letter was about")
                              : QStringLiteral("%1 letters were about").arg(count),
                   Intent(doubt.place), SecondText(doubt.since),
                   count == 1 ? QStringLiteral("was") : QStringLiteral("were"), Evidence(doubt.place)),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNoCancel,
      .question = Question::kLettersInDoubt,
      .defaultAnswer = MessageAnswer::kCancel};
}

LetterMarks::LetterMarks(Connection& connection, QString user) : connection_(connection), user_(std::move(user)) {}

LetterMarks::Marked LetterMarks::WentOut(int campaignId, const std::vector<qint64>& rows) {
  Marked marked;
  Transaction transaction(connection_);
  Recordset sent = Procedure(connection_, "proc_updp_Letters_Sent")
                       .Open({{"@CampaignID", campaignId}, {"@Rows", KeyList(rows)}, {"@UserID", user_}});
  for (sent.MoveFirst(); !sent.Eof(); sent.MoveNext())
    marked.rows.insert(sent.Field(QStringLiteral("RecordID")).ToInt());
  const Recordset processed = Procedure(connection_, "proc_updp_Letters_Processed").Open({{"@CampaignID", campaignId}});
  marked.processed = static_cast<int>(processed.RecordCount());
  transaction.Commit();
  return marked;
}

void LetterMarks::AboutToGoOut(int campaignId, const std::vector<qint64>& rows, const ReportPlace& place) {
  connection_.ReopenIfLost();
  Procedure(connection_, "proc_updp_Letters_File")
      .Execute({{"@CampaignID", campaignId}, {"@Rows", KeyList(rows)}, {"@File", Stored(place)}});
}

void LetterMarks::NotOut(int campaignId, const std::vector<qint64>& rows) {
  connection_.ReopenIfLost();
  Procedure(connection_, "proc_updp_Letters_File").Execute({{"@CampaignID", campaignId}, {"@Rows", KeyList(rows)}});
}

LettersInDoubt LetterMarks::InDoubt(int campaignId) {
  LettersInDoubt doubt;
  Recordset rows = Procedure(connection_, "proc_selp_Letters_In_Doubt").Open({{"@CampaignID", campaignId}});
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    doubt.rows.push_back(rows.Field(QStringLiteral("RecordID")).ToInt());
    doubt.place = PlaceOf(rows.Field(QStringLiteral("Letter_File")).ToText());
    doubt.since = rows.Field(QStringLiteral("Changed")).ToDateTime();
  }
  return doubt;
}

}  // namespace qbx
