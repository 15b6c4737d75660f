#include "consent/letter_ledger.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <algorithm>
#include <utility>

namespace qbx::consent {
namespace {

QString OneBreak(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

/// Values are inserted into RTF unchanged, so braces in them are no text.
FieldValues InRtf(FieldValues values) {
  for (QString* value : {&values.contact, &values.make, &values.model, &values.title, &values.firstname})
    value->remove(u'{').remove(u'}');
  return values;
}

}  // namespace

QString AsRtf(const QString& text) {
  QString rtf = QStringLiteral("{\\rtf1\\ansi ");
  for (const QChar c : OneBreak(text)) {
    if (c == u'{' || c == u'}' || c == u'\\')
      rtf += u'\\' + QString(c);
    else if (c == u'\n')
      rtf += QStringLiteral("\\par ");
    else if (c.unicode() > 126)
      rtf += QStringLiteral("\\u%1?").arg(c.unicode());
    else
      rtf += c;
  }
  return rtf + u'}';
}

bool IsWholeAddress(const QString& address) {
  return address.contains(QStringLiteral("MB1 2AB"));
}

LetterLedger::Announcements LetterLedger::LookAtAll() const {
  Announcements all;
  for (const Row& row : ledger_.rows) {
    const bool letterOnly = !row.sms.wanted && !row.mail.wanted;
    const bool open = !row.processed || (again_ && (letterOnly || row.post.delivered));
    all[row.record] = {AskAgain(row, Channel::kLetter, world_), !row.gone && row.letter && open};
  }
  return all;
}

void LetterLedger::RunBegins(bool again) {
  again_ = again;
  before_.clear();
  arrivedNow_.clear();
  for (Row& row : ledger_.rows) {
    row.due = !row.gone && row.letter && !row.processed && !row.post.delivered;
    row.disturbed = false;
    row.post.permit = row.post.permit || again;
  }
}

void LetterLedger::Disturbs(int made) {
  before_.emplace_back(made, LookAtAll());
}

void LetterLedger::AtAnotherDesk(const std::function<void()>& run) {
  Disturbs(kAll);
  const auto before = std::exchange(before_, {});
  run();
  before_ = before;
}

void LetterLedger::Arrived(int number, const QString& text, const std::optional<QString>& nameAddress) {
  Row* row = ledger_.WithTag(text.section(u':', 0, 0));
  if (row == nullptr) return story_.Fault(QStringLiteral("a letter that belongs to no row: ") + text);
  story_.Tell(QStringLiteral("    letter %1 to %2").arg(number).arg(row->Name()));
  const auto then = std::find_if(before_.begin(), before_.end(), [&](const auto& one) { return number <= one.first; });
  const Announcement made = (then == before_.end() ? LookAtAll() : then->second).value(row->record);
  if (!made.wanted) Fault(*row, QStringLiteral("was made, and was not asked for"));
  if (made.verdict == Verdict::kMustNot)
    Fault(*row, QStringLiteral("is to somebody who MAY NOT BE CONTACTED any more"));
  if (!IsWholeAddress(row->address)) Fault(*row, QStringLiteral("has no address"));
  if (row->post.arrived > 0 && !row->post.permit) Fault(*row, QStringLiteral("went out TWICE"));
  row->post.permit = false;
  ++row->post.arrived;
  ++count_;
  arrivedNow_.insert(row->record);
  if (!nameAddress) return;
  if (!nameAddress->endsWith(u'\r' + row->address)) Fault(*row, QStringLiteral("has the address ") + *nameAddress);
  const QString wanted = OneBreak(Merged(letter, InRtf(row->values), clock_.Today()));
  if (OneBreak(text) != wanted)
    Fault(*row, QStringLiteral("says \"") + text + QStringLiteral("\", not \"") + wanted + u'"');
}

void LetterLedger::RunEnds(const LetterReport& report, const std::vector<StoredRow>& stored) {
  for (const StoredRow& now : stored)
    if (Row* row = ledger_.Find(now.record)) CheckRow(*row, now, report);
}

void LetterLedger::CheckRow(Row& row, const StoredRow& now, const LetterReport& report) {
  const bool sent = now.journal.letter == JournalState::kSent;
  if (sent && row.post.arrived == 0) Fault(row, QStringLiteral("is noted as sent, and was not"));
  if (!sent && row.post.delivered) Fault(row, QStringLiteral("lost its mark"));
  if (!sent && arrivedNow_.contains(row.record)) {
    if (report.finished) Fault(row, QStringLiteral("went out and is not noted as sent"));
    // A letter of a processed row goes out only when the user wants letters again. It keeps its record then.
    if (report.announced && now.letterPlace.isEmpty() && !row.processed)
      Fault(row, QStringLiteral("went out, and is neither noted as sent nor in doubt"));
    row.post.permit = row.post.permit || !report.announced;
  }
  row.post.delivered = sent;
  if (now.processed && !row.processed && (row.sms.wanted || row.mail.wanted || !sent))
    Fault(row, QStringLiteral("marked the row, which is not done"));
  if (!now.processed && row.processed) story_.Fault(row.Name() + QStringLiteral(" lost its mark"));
  row.processed = now.processed;
  if (report.finished && row.due && !row.disturbed) CheckDone(row, report);
}

void LetterLedger::CheckDone(const Row& row, const LetterReport& report) {
  if (row.post.delivered) return;
  if (IsWholeAddress(row.address) && AskAgain(row, Channel::kLetter, world_) == Verdict::kMust)
    return Fault(row, QStringLiteral("was due and is LOST"));
  if (!NamesCustomer(report.log, row.customer))
    Fault(row, QStringLiteral("was left out without a line in the results log"));
}

void ReadLetterFile(const QString& file, LetterLedger& letters) {
  if (!QFile::exists(file)) return;
  QProcess reader;
  reader.start(QStringLiteral("pdftotext"), {file, QStringLiteral("-")});
  reader.waitForFinished();
  static const QRegularExpression beginning(QStringLiteral("Nr\\d+/(R\\d+)?:"));
  int number = 0;
  for (auto found = beginning.globalMatch(QString::fromUtf8(reader.readAllStandardOutput())); found.hasNext();)
    letters.Arrived(++number, found.next().captured(), {});
}

}  // namespace qbx::consent
