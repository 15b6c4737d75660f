#include "marketingctl/refusals.h"

#include <array>
#include <cstdio>
#include <optional>

#include "database/server_errors.h"
#include "marketingctl/exit_codes.h"

namespace qbx::ctl {

namespace {

constexpr auto kErrorCodes = std::to_array<ErrorCode>({
    {Reason::kUsage, "usage", "the command line is wrong (exit code 2)"},
    {Reason::kNoUser, "no_user", "nobody was named with --user or QBX_USER"},
    {Reason::kNoFolder, "no_folder", "the program folder does not exist"},
    {Reason::kNoDatabase, "no_database", "there is no database of that name"},
    {Reason::kDatabaseAway, "database_away",
     "the database cannot be used: it is offline, damaged or newer than the program, or its server is unavailable"},
    {Reason::kStartFailed, "start_failed",
     "the program did not start well: damaged files, options that cannot be read"},
    {Reason::kDatabaseExists, "database_exists", "the folder holds a database, and --replace was not given"},
    {Reason::kUnknownCampaign, "unknown_campaign", "there is no campaign of that number or name"},
    {Reason::kAmbiguousName, "ambiguous_name", "several campaigns have that name"},
    {Reason::kInvalidName, "invalid_name", "a campaign cannot have that name, or a database"},
    {Reason::kNameTaken, "name_taken", "another campaign has that name, and --allow-same-name was not given"},
    {Reason::kUnknownRow, "unknown_row", "the campaign has no such row"},
    {Reason::kUnknownOption, "unknown_option", "there is no option of that name"},
    {Reason::kSettingsRefused, "settings_refused", "the campaign cannot be queried as it is set up"},
    {Reason::kRowsProcessed, "rows_processed",
     "something of the campaign went out, and --reset-processed was not given"},
    {Reason::kNotAgreed, "not_agreed", "a question was not answered with Yes by a flag, such as --yes"},
    {Reason::kClaimed, "claimed", "the campaign is being sent"},
    {Reason::kNotManager, "not_manager", "only the user \"manager\" may do it"},
    {Reason::kOptionsUnread, "options_unread", "the options could not be read, so nobody's consent is known"},
    {Reason::kNoTemplate, "no_template", "the text or the e-mail of the campaign is empty"},
    {Reason::kUnknownField, "unknown_field",
     "a text, an e-mail or a letter holds an unknown merge field, and --allow-unknown-fields was not given"},
    {Reason::kEmptySubject, "empty_subject", "the e-mails would go without a subject"},
    {Reason::kNoAccount, "no_account", "the SMS account or the sender's address is not set"},
    {Reason::kNoCredits, "no_credits", "the SMS account has too few credits"},
    {Reason::kCreditsUnknown, "credits_unknown", "the SMS gateway answered, but not with a balance"},
    {Reason::kGatewayAway, "gateway_away", "the SMS gateway cannot be reached"},
    {Reason::kNothingToSend, "nothing_to_send", "nothing was due, and --nothing-is-an-error was given"},
    {Reason::kLettersInDoubt, "letters_in_doubt",
     "letters may have been saved or printed and were not marked, and --in-doubt was not given"},
    {Reason::kInterrupted, "interrupted", "the query, the letters or the report were interrupted"},
    {Reason::kScriptRefused, "script_refused", "the server refused a batch of the script that \"server install\" runs"},
    {Reason::kOther, "failed", "anything else; the message says what"},
});

struct KeptRefusal {
  Reason reason;
  QString text;
};

std::optional<KeptRefusal>& Kept() {
  static std::optional<KeptRefusal> kept;
  return kept;
}

const char* CodeOf(Reason reason) {
  for (const ErrorCode& code : kErrorCodes) {
    if (code.reason == reason) return code.code;
  }
  return kErrorCodes.back().code;
}

}  // namespace

std::span<const ErrorCode> ErrorCodes() {
  return kErrorCodes;
}

int Refuse(Reason reason, const QString& text) {
  NoteRefusal(reason, text);
  std::fprintf(stderr, "%s\n", text.toUtf8().constData());
  return kRefused;
}

int Refuse(const QString& text) {
  return Refuse(Reason::kOther, text);
}

void NoteRefusal(Reason reason, const QString& text) {
  if (reason == Reason::kOther && SaysConnectionLost(text)) reason = Reason::kDatabaseAway;
  std::optional<KeptRefusal>& kept = Kept();
  if (!kept) kept = {reason, text.simplified()};
  if (kept->reason == Reason::kOther) kept->reason = reason;
}

void NoteLostDatabase(Connection& connection) {
  std::optional<KeptRefusal>& kept = Kept();
  if (kept && kept->reason == Reason::kOther && connection.IsLost()) kept->reason = Reason::kDatabaseAway;
}

QJsonObject ErrorJson() {
  const std::optional<KeptRefusal>& kept = Kept();
  if (!kept) return {};
  const QJsonObject error{{QStringLiteral("code"), QLatin1String(CodeOf(kept->reason))},
                          {QStringLiteral("message"), kept->text}};
  return {{QStringLiteral("error"), error}};
}

}  // namespace qbx::ctl
