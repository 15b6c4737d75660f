// The checks of each "Next >" before anything runs.

#pragma once

#include <QDate>
#include <QString>
#include <array>
#include <optional>

#include "platform/user_interface.h"
#include "queries/filters.h"
#include "queries/query_options.h"

namespace qbx {

/// The tabs of the wizard by number. The index of a tab's "Next >" and "< Back" is one less.
enum WizardTab : int { kQueryTab = 1, kFilterTab, kResultsTab, kTemplatesTab, kProcessTab };
inline constexpr int kTabCount = kProcessTab;
/// \param tab  1 to 5
[[nodiscard]] QString TabCaption(int tab);

/// The checks of step 1 in their order; the first that fails gives its message. "Top" and "Bottom" fill empty dates. A
/// date check that passes sets the two date texts, even if a later check fails.
/// \param query          the campaign's query number
/// \param usingPlatform  whether the marketing platform is in use, so that a campaign type is needed
[[nodiscard]] std::optional<Message> CheckStepOne(int query, QueryOptions& options, bool usingPlatform,
                                                  const QDate& today);

/// The checks of step 2, in their order.
[[nodiscard]] std::optional<Message> CheckStepTwo(int query, const Filters& filters, bool boatEdition);

/// The message of a command that needs the database when there never was a connection.
[[nodiscard]] Message NoDatabaseMessage();

/// The refusal to print or export results without rows.
[[nodiscard]] Message NoResultsMessage(const QString& action);

/// The refusal of a "Next >" whose preceding step is not complete.
[[nodiscard]] Message StepNotReachedMessage();

/// The refusal of "Run Marketing Campaign" to open the last tab: names the first of steps 1 to 3 that is not complete.
[[nodiscard]] std::optional<Message> CheckRunCampaign(const std::array<bool, 4>& bStepComplete);

/// The question before a "Next >" that would replace rows of which some were sent.
[[nodiscard]] Message ResetProcessedQuestion();

/// The notice after step 2 when opted-out customers are included although the company does not restrict itself to those
/// who opted in.
[[nodiscard]] std::optional<Message> OptedOutNotice(const Filters& filters, bool onlySendWhenOptedIn);

}  // namespace qbx
