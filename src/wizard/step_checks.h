// What each "Next >" checks before anything runs.

#pragma once

#include <QDate>
#include <QString>
#include <array>
#include <optional>

#include "platform/user_interface.h"
#include "queries/filters.h"
#include "queries/query_options.h"

namespace qbx {

/// The tabs of the wizard by number. "Next >" and "< Back" of a tab are known by its number less one.
enum WizardTab : int { kQueryTab = 1, kFilterTab, kResultsTab, kTemplatesTab, kProcessTab };
inline constexpr int kTabCount = kProcessTab;
/// \param tab  1 to 5
[[nodiscard]] QString TabCaption(int tab);

/// The checks of step 1, in their order: the first that fails gives its message. "Top" and "Bottom" fill empty dates,
/// and a date check that passes sets the two date texts, whether or not a later check fails.
/// \param query          the campaign's query number
/// \param usingPlatform  the marketing platform is in use: a campaign type is needed
[[nodiscard]] std::optional<Message> CheckStepOne(int query, QueryOptions& options, bool usingPlatform,
                                                  const QDate& today);

/// The checks of step 2, in their order.
[[nodiscard]] std::optional<Message> CheckStepTwo(int query, const Filters& filters, bool boatEdition);

/// What a command that needs the database says while there never was a connection.
[[nodiscard]] Message NoDatabaseMessage();

/// What refuses printing or exporting results that have no rows.
[[nodiscard]] Message NoResultsMessage(const QString& action);

/// The refusal of a "Next >" whose step before was not completed.
[[nodiscard]] Message StepNotReachedMessage();

/// What keeps "Run Marketing Campaign" from opening the last tab: the first of steps 1 to 3 that is not complete.
[[nodiscard]] std::optional<Message> CheckRunCampaign(const std::array<bool, 4>& bStepComplete);

/// The question before a "Next >" that would replace rows of which some are already sent.
[[nodiscard]] Message ResetProcessedQuestion();

/// The notice after step 2 when opted-out customers are included while the company does not limit itself to those who
/// opted in.
[[nodiscard]] std::optional<Message> OptedOutNotice(const Filters& filters, bool onlySendWhenOptedIn);

}  // namespace qbx
