#include "wizard/step_checks.h"

#include "queries/date_check.h"
#include "queries/plain_messages.h"
#include "queries/query_catalogue.h"

namespace qbx {

namespace {

std::optional<Message> CheckVehicleFilters(int number, const Filters& filters, bool boatEdition) {
  const StartingQuery* const query = FindStartingQuery(number);
  if (query == nullptr || query->vehicleFilters || !filters.AnyVehicleFilter()) return std::nullopt;
  return WarningMessage(
      QStringLiteral("%1 Filters cannot be used when using the %2 Query option.")
          .arg(boatEdition ? QLatin1String("Boat") : QLatin1String("Vehicle"), QLatin1String(query->key)));
}

}  // namespace

QString TabCaption(int tab) {
  static constexpr const char* kCaptions[] = {"1. Query / Report Starting Point", "2. Data Filtering",
                                              "3. Report Results", "4. Marketing Email and Letter Templates",
                                              "5. Process Results"};
  return tab < 1 || tab > kTabCount ? QString() : QString::fromLatin1(kCaptions[tab - 1]);
}

std::optional<Message> CheckStepOne(int query, QueryOptions& options, bool usingPlatform, const QDate& today) {
  if (IsGroupNode(query)) return WarningMessage(QStringLiteral("Invalid Campaign Type Selected."));
  if (usingPlatform && options.cmbType.isEmpty())
    return InformationMessage(QStringLiteral("Please select a Campaign Type."));
  if (HasDateCheck(query) && !CheckQueryDates(query, options, today))
    return WarningMessage(QStringLiteral("Dates are not valid."));
  const StartingQuery* const found = FindStartingQuery(query);
  return found == nullptr ? std::nullopt : CheckQueryOptions(*found, options);
}

std::optional<Message> CheckStepTwo(int query, const Filters& filters, bool boatEdition) {
  if (std::optional<Message> refusal = CheckVehicleFilters(query, filters, boatEdition)) return refusal;
  if (std::optional<Message> refusal = CheckBetween(filters, boatEdition)) return refusal;
  return CheckNeededValues(filters, boatEdition);
}

Message NoDatabaseMessage() {
  return {
      .text = QStringLiteral(
          "There is no connection to the database, so this cannot be done now.\r\rPlease check that the database server is running, and start the program again."),
      .icon = MessageIcon::kExclamation};
}

Message NoResultsMessage(const QString& action) {
  return {.text = QStringLiteral("There are no results to %1.").arg(action), .icon = MessageIcon::kExclamation};
}

Message StepNotReachedMessage() {
  return InformationMessage(
      QStringLiteral("Please go to Step 1 and click Next to complete that step before continuing onto another step."));
}

std::optional<Message> CheckRunCampaign(const std::array<bool, 4>& bStepComplete) {
  for (int step = 1; step <= 3; ++step) {
    if (bStepComplete[static_cast<size_t>(step)]) continue;
    return WarningMessage(QStringLiteral("Step %1 has not been completed. Please go to tab %2 and click 'Next >'.")
                              .arg(QString::number(step), TabCaption(step)));
  }
  return std::nullopt;
}

Message ResetProcessedQuestion() {
  return {
      .text = QStringLiteral(
          "Please note that some results have been processed. If you click next on Step 1 or Step 2 then the results will be reset. If you want to process any unprocessed results you can just switch to the tab directly without using the Next button.\r\rDo you want to reload the results and reset the Processed Status?"),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo,
      .question = Question::kResetProcessedResults,
      .defaultAnswer = MessageAnswer::kNo};
}

std::optional<Message> OptedOutNotice(const Filters& filters, bool onlySendWhenOptedIn) {
  if (!filters.chkIncludeOptedOut || onlySendWhenOptedIn) return std::nullopt;
  return WarningMessage(QStringLiteral(
      "Please note you have disabled the option to only send to people who have opted in.\r\n\r\nDue to GDPR laws please ensure that you do not send marketing emails to those who do not wish to receive them."));
}

}  // namespace qbx
