// What each "Next >" checks before anything runs.

#include "wizard/step_checks.h"

#include "queries/date_check.h"
#include "queries/plain_messages.h"
#include "queries/query_catalogue.h"
#include "util/text.h"

namespace qbx {

namespace {

std::optional<Message> CheckRanking(const QueryOptions& options) {
  if (LeadingNumber(options.txtCriteria) <= 0)
    return WarningMessage(QStringLiteral("Criteria is not valid. Number expected."));
  if (LeadingNumber(options.txtCriteriaStart) <= 0)
    return WarningMessage(QStringLiteral("Criteria Start Record is not valid. Number expected."));
  return std::nullopt;
}

std::optional<Message> CheckMakes(int query, const QueryOptions& options) {
  if (!TrimBlanks(options.txtMakes).isEmpty()) return std::nullopt;
  return WarningMessage(query == kSpecificMakes
                            ? QStringLiteral("Makes Selection is not valid. Please choose one or more Makes.")
                            : QStringLiteral("Engines Selection is not valid. Please choose one of more Engines."));
}

std::optional<Message> CheckVehicleFilters(int query, const Filters& filters, bool boatEdition) {
  if ((query != kTopCustomers && query != kBottomCustomers) || !filters.AnyVehicleFilter()) return std::nullopt;
  return WarningMessage(QStringLiteral("%1 Filters cannot be used when using the %2 Customers Query option.")
                            .arg(boatEdition ? QLatin1String("Boat") : QLatin1String("Vehicle"),
                                 query == kTopCustomers ? QLatin1String("Top") : QLatin1String("Bottom")));
}

/// A "Between" whose first value is above its second.
bool IsReversed(const Filters& filters, FilterIndex filter, const std::array<QString, 2>& values) {
  return filters.Ticked(filter) && IsBetween(filters, filter) && LeadingNumber(values[0]) > LeadingNumber(values[1]);
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
  switch (query) {
    case kTopCustomers:
    case kBottomCustomers:
      return CheckRanking(options);
    case kSpecificMakes:
    case kSpecificEngines:
      return CheckMakes(query, options);
    case kReminderDate:
      if (options.cmbReminder < 0) return WarningMessage(QStringLiteral("No Reminder specified."));
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

std::optional<Message> CheckStepTwo(int query, const Filters& filters, bool boatEdition) {
  if (std::optional<Message> refusal = CheckVehicleFilters(query, filters, boatEdition)) return refusal;
  if (IsReversed(filters, kFilterMileage, filters.txtMileage)) {
    const QString text = QStringLiteral("%1 Filter is not valid. %1 From must be less than %1 To");
    return WarningMessage(text.arg(boatEdition ? QLatin1String("Hours") : QLatin1String("Mileage")));
  }
  if (IsReversed(filters, kFilterYear, filters.txtYear))
    return WarningMessage(QStringLiteral("Year Filter is not valid. Year From must be less than Year To"));
  return CheckModelFilter(filters, boatEdition);
}

Message NoDatabaseMessage() {
  return {.text = QStringLiteral("There is no connection to the database, so this cannot be done now.\r\r"
                                 "Please check that the database server is running, and start the program again."),
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
  return {.text = QStringLiteral(
              "Please note that some results have been processed. If you click next on Step 1 or Step 2 then the "
              "results will be reset. If you want to process any unprocessed results you can just switch to the tab "
              "directly without using the Next button.\r\rDo you want to reload the results and reset the Processed "
              "Status?"),
          .icon = MessageIcon::kQuestion,
          .buttons = MessageButtons::kYesNo,
          .question = Question::kResetProcessedResults};
}

std::optional<Message> OptedOutNotice(const Filters& filters, bool onlySendWhenOptedIn) {
  if (!filters.chkIncludeOptedOut || onlySendWhenOptedIn) return std::nullopt;
  return WarningMessage(QStringLiteral(
      "Please note you have disabled the option to only send to people who have opted in.\r\n\r\nDue to GDPR laws "
      "please ensure that you do not send marketing emails to those who do not wish to receive them."));
}

}  // namespace qbx
