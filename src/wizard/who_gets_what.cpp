#include "wizard/who_gets_what.h"

namespace qbx {

namespace {

QString Listed(const std::vector<CountedRows>& counted) {
  QStringList parts;
  for (const CountedRows& part : counted)
    parts += QStringLiteral("%1 %2").arg(part.what).arg(part.rows);
  return parts.join(QStringLiteral(", ")) + u'.';
}

}  // namespace

WhoGetsWhat CountWhoGetsWhat(Statements& statements, int campaignId, const LeftOut& leftOut, bool boatEdition) {
  static constexpr char kCount[] =
      R"(SELECT Count(*) AS Records,
  Count(CASE WHEN Send_SMS = 1 THEN 1 END) AS Texts,
  Count(CASE WHEN Send_Email = 1 THEN 1 END) AS Emails,
  Count(CASE WHEN Send_Letter = 1 THEN 1 END) AS Letters,
  Count(CASE WHEN IsNull(Send_SMS, 0) = 0 AND IsNull(Send_Email, 0) = 0 AND IsNull(Send_Letter, 0) = 0 THEN 1 END) AS GetNothing
FROM [Campaign Results] WHERE CampaignID = %1)";
  Recordset counts;
  if (statements.dbOpenRec(counts, QString::fromLatin1(kCount).arg(campaignId)) || counts.Eof()) return {};
  const auto count = [&counts](const char* what, const char* field) {
    return CountedRows{QString::fromLatin1(what), counts.Field(QString::fromLatin1(field)).ToInt()};
  };
  return {.rows = counts.Field(QStringLiteral("Records")).ToInt(),
          .gets = {count("Text", "Texts"), count("E-mail", "Emails"), count("Letter", "Letters"),
                   count("Nothing", "GetNothing")},
          .leftOut = CountLeftOut(leftOut, boatEdition)};
}

QString InWords(const WhoGetsWhat& counts) {
  if (counts.rows == 0) return QStringLiteral("There are no rows.");
  const QString gets = QStringLiteral("%1 rows. ").arg(counts.rows) + Listed(counts.gets);
  return counts.leftOut.empty() ? gets : gets + QStringLiteral(" Left out: ") + Listed(counts.leftOut);
}

}  // namespace qbx
