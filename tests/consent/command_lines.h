// A plan as arguments of the command line.

#pragma once

#include "consent/query_plan.h"
#include "dispatch/mailshot_checks.h"

namespace qbx::consent {

/// Unticks filters that a command line cannot express: ticked ones without a condition.
void KeepToCommandLine(QueryPlan& plan);

/// "query --query ... --save Round".
[[nodiscard]] QStringList QueryWords(const QueryPlan& plan, const MailshotTemplates& templates);
/// "--send-by sms=0 ...", empty when no channel has a rule.
[[nodiscard]] QStringList SendByWords(const SendMethods& methods);

}  // namespace qbx::consent
