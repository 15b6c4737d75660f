// Filling the parameter and formula fields of a report.

#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "campaigns/campaign_record.h"
#include "printing/report_state.h"
#include "reports/report.h"
#include "settings/options.h"
#include "settings/startup_values.h"

namespace qbx {

/// Where the values come from.
struct ReportFacts {
  const StartupValues& startup;
  const Options& options;
  const CurrentCampaign& campaign;
  const ReportState& state;
  QDate today;
};

/// Sets one parameter field ("{?@UserID}", "{?@SessionID}", "{?@DateFrom}", "{?@DateTo}", "{?@CampaignID}"). Other
/// names are ignored. A date that is not given stays unset.
void SetReportParameter(Report& report, const QString& parameterField, const ReportFacts& facts);

/// The text of a formula field, such as the company's name in double quotes; nothing for other names.
[[nodiscard]] std::optional<QString> ReportFormulaText(const QString& formulaField, const ReportFacts& facts);

/// Sets the text of one formula field. Other names are ignored; "{@ReportTitle}" and "{@Landscape}" are read instead.
/// \throws ReportError
void SetReportFormula(Report& report, const QString& formulaField, const ReportFacts& facts, ReportState& state);

/// A text of several lines for a string in a formula: each line break becomes `" + Chr(10) + "`.
[[nodiscard]] QString EscapeFormulaText(const QString& text);

/// The file name without folders and without its last four characters.
[[nodiscard]] QString ReportFileTitle(const QString& path);

}  // namespace qbx
