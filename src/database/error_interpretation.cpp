#include "database/error_interpretation.h"

#include <array>

#include "database/server_errors.h"

namespace qbx {

namespace {

constexpr int kOldestVersion = 6;
constexpr int kCurrentVersion = 999;

const QLatin1String kLineBreak("\r\n");
const QLatin1String kTwoLineBreaks("\r\n\r\n");
const QLatin1String kTwoReturns("\r\r");

bool Contains(const QString& text, const char* phrase) {
  return text.contains(QLatin1String(phrase), Qt::CaseInsensitive);
}

QString Between(const QString& text, const char* start, const char* end) {
  return TextBetween(text, QLatin1String(start), QLatin1String(end));
}

QString MissingValue(const QString& message, const QString& text) {
  return message + kLineBreak + QLatin1String("Missing Value '") + Between(text, "@", "'") + u'\'' + kLineBreak;
}

QString ForeignKey(const QString& message, const QString& text) {
  const QString column = Between(text, "COLUMN '", "'");
  const QString table = Between(text, "TABLE '", "'");
  return message + QLatin1String("The value entered for '") + column +
         QLatin1String("' does not exist in the table '") + table +
         QLatin1String("', please enter a valid value in '") + column + QLatin1String("' and try again.");
}

QString PrimaryKey(const QString&, const QString&) {
  return QStringLiteral("The Reference value entered already exists for this record type.");
}

QString IncorrectSyntax(const QString&, const QString& text) {
  return QLatin1String("Incorrect syntax ") + Between(text, "INCORRECT SYNTAX", ".") + kLineBreak;
}

QString SyntaxError(const QString& message, const QString&) {
  return QLatin1String("Incorrect database query specified. ") + message + kLineBreak;
}

QString StillReferenced(const QString&, const QString& text) {
  return QLatin1String("The record you attempted to delete cannot be deleted as it has references to '") +
         Between(text, "table '", "'") + QLatin1String("', specifically relating to the column '") +
         Between(text, "column '", "'") + QLatin1String("'.");
}

QString Terminated(const QString& message, const QString&) {
  return message + kTwoLineBreaks + QLatin1String("The operation has been cancelled.");
}

QString TimeExpired(const QString& message, const QString&) {
  return message + kLineBreak + QLatin1String("The operation did not complete in the time expected.");
}

QString OwnWords(const QString& message, const QString& text) {
  const QString before = message.isEmpty() ? QString() : message + kTwoLineBreaks;
  return before + text.mid(text.lastIndexOf(u']') + 1) + kLineBreak;
}

/// A phrase of the server, and how it changes the message. Only the first phrase found in an error's text applies.
struct PhraseRule {
  const char* phrase;
  QString (*apply)(const QString& message, const QString& text);
};

// The program's own tables have no foreign keys, but other tables of a SQL Server may have them.
constexpr std::array kPhraseRules = {
    PhraseRule{"EXPECTS PARAMETER", MissingValue},
    PhraseRule{"FOREIGN KEY CONSTRAINT", ForeignKey},
    PhraseRule{"PRIMARY KEY CONSTRAINT", PrimaryKey},
    PhraseRule{"INCORRECT SYNTAX", IncorrectSyntax},
    PhraseRule{"SYNTAX ERROR", SyntaxError},
    PhraseRule{"DELETE STATEMENT CONFLICTED WITH COLUMN REFERENCE CONSTRAINT", StillReferenced},
    PhraseRule{"STATEMENT HAS BEEN TERMINATED", Terminated},
    PhraseRule{"TIMEOUT EXPIRED", TimeExpired},
    PhraseRule{"", OwnWords},
};

QString Interpret(const std::vector<ProviderError>& errors) {
  QString message;
  for (const ProviderError& error : errors) {
    for (const PhraseRule& rule : kPhraseRules) {
      if (!Contains(error.description, rule.phrase)) continue;
      message = rule.apply(message, error.description);
      break;
    }
  }
  return message;
}

/// Names of procedures mean nothing to the user, but something to an intruder.
QString HideProcedureNames(QString message) {
  constexpr std::array<std::array<const char*, 2>, 6> kReplacements = {{
      {"proc_delp_", "pdelete_"},
      {"proc_sel_", "select_"},
      {"proc_selp_", "pselect_"},
      {"proc_updp_", "pupdate_"},
      {"_keys", "_ID_"},
      {"not find stored procedure", "not find procedure"},
  }};
  for (const auto& [from, to] : kReplacements)
    message.replace(QLatin1String(from), QLatin1String(to));
  return message;
}

QString PendingInstead(const DatabaseError& pending) {
  QString message = kLineBreak + pending.Description();
  if (message.contains(QLatin1String("value of the wrong type")))
    message = QLatin1String("Database Update: ") + message + kTwoLineBreaks +
              QLatin1String("A data field may not be filled in correctly, is blank, or has more data than expected.");
  if (pending.Number() == kWrongType)
    message += kTwoLineBreaks + QLatin1String("Please ensure that all the required fields have been entered.");
  return message;
}

}  // namespace

QString TextBetween(const QString& text, const QString& start, const QString& end) {
  const qsizetype marker = text.indexOf(start, 0, Qt::CaseInsensitive);
  if (marker < 0) return {};
  const qsizetype from = marker + start.size();
  const qsizetype to = text.indexOf(end, from, Qt::CaseInsensitive);
  return to < 0 ? QString() : text.mid(from, to - from);
}

ErrorInterpretation::ErrorInterpretation(const EventContext& context, EventLog& events, LastError& lastError,
                                         Diagnostics diagnostics)
    : context_(context), events_(events), lastError_(lastError), diagnostics_(diagnostics) {}

QString ErrorInterpretation::ReportDatabaseError(const Connection* connection, const QString& /*routine*/,
                                                 const QString& /*sql*/, const DatabaseError& pending,
                                                 const QString& before) {
  diagnostics_.status.Close();
  if (connection == nullptr) return {};
  QString message = HideProcedureNames(Interpret(connection->Errors()));
  if (message.isEmpty()) message = PendingInstead(pending);
  diagnostics_.log.WriteLog(kDatabaseErrorPrefix + message);
  if (Contains(message, "the time expected") || Contains(message, "time out period"))
    message +=
        kTwoReturns +
        QLatin1String("A record may be required which may be being edited and which can't be updated at this time.");
  const QString above = before.isEmpty() ? QString() : before + kTwoReturns;
  if (SaysConnectionLost(message)) {
    OfferToQuit(above + message);
    return message;
  }
  if (context_.DatabaseVersion != kOldestVersion && context_.DatabaseVersion != kCurrentVersion)
    message += kTwoReturns + QLatin1String("This system may need updating! Please do a Check for Updates.");
  lastError_.DbErrorShown = true;
  events_.LogEvent(kEventError, 0, QStringLiteral("DB"), message.trimmed());
  diagnostics_.ui.ShowMessage(
      {.text = above + message, .icon = MessageIcon::kExclamation, .defaultAnswer = MessageAnswer::kOk});
  return message;
}

void ErrorInterpretation::OfferToQuit(const QString& message) {
  const MessageAnswer answer = diagnostics_.ui.ShowMessage(
      {.text = message + kTwoReturns +
               QLatin1String("Database connection lost. Recommended to quit the program. OK to quit?"),
       .icon = MessageIcon::kExclamation,
       .buttons = MessageButtons::kYesNo,
       .question = Question::kQuitAfterLostConnection});
  if (answer == MessageAnswer::kYes) diagnostics_.ui.RequestQuit();
}

}  // namespace qbx
