#include "printing/report_fields.h"

#include <QHash>

#include "util/date_text.h"
#include "util/typed_date.h"

namespace qbx {

namespace {

/// A text as a formula: in double quotes, with the double quotes inside it doubled.
QString Quoted(QString text) {
  return u'"' + text.replace(u'"', QLatin1String("\"\"")) + u'"';
}

/// A text of several lines as a formula.
QString QuotedLines(QString text) {
  return u'"' + EscapeFormulaText(text.replace(u'"', QLatin1String("\"\""))) + u'"';
}

QString QuotedFlag(bool on) {
  return on ? QStringLiteral("\"YES\"") : QStringLiteral("\"NO\"");
}

QString EditionCode(const EditionFlags& edition) {
  if (edition.boat) return QStringLiteral("MX");
  if (edition.truck) return QStringLiteral("HO");
  if (edition.parts) return QStringLiteral("TE");
  return edition.commercialVehicle ? QStringLiteral("WE") : QStringLiteral("KO");
}

/// Whether a period begins with the first day that the host keeps; it then has no beginning.
bool IsFirstRecord(const QString& date) {
  return date.isEmpty() || date == QLatin1String("1989-01-13") || date == QLatin1String("13/01/1989");
}

QString Period(const ReportFacts& facts) {
  const ReportState& state = facts.state;
  const QString from = IsFirstRecord(state.dateFromText) ? QStringLiteral("First Record") : state.dateFromText;
  const QString to = state.dateToText.isEmpty() ? DayText(facts.today) : state.dateToText;
  return QStringLiteral("Period: %1 to %2").arg(from, to);
}

QString CompanyCode(const ReportFacts& facts) {
  const QString& code = facts.options.CompanyCode;
  return code.isEmpty() ? facts.startup.companyCode : code;
}

/// The postcode; empty when the address holds it already.
QString Postcode(const ReportFacts& facts) {
  const auto plain = [](const QString& text) { return QString(text).remove(u' ').toUpper(); };
  const QString& postcode = facts.options.CoPostcode;
  return plain(facts.options.Address).contains(plain(postcode)) ? QString() : postcode;
}

using FormulaSource = QString (*)(const ReportFacts& facts);

const QHash<QString, FormulaSource>& FormulaSources() {
  using Facts = const ReportFacts&;
  static constexpr FormulaSource address = [](Facts f) { return QuotedLines(f.options.Address); };
  static const QHash<QString, FormulaSource> sources = {
      {QStringLiteral("{@HidePrices}"), [](Facts) { return QuotedFlag(false); }},
      {QStringLiteral("{@AppName}"), [](Facts f) { return Quoted(EditionCode(f.startup.edition)); }},
      {QStringLiteral("{@MultiCompany}"), [](Facts f) { return QuotedFlag(f.options.MultiCompany); }},
      {QStringLiteral("{@DetailedReport}"), [](Facts f) { return QuotedFlag(f.options.DetailedReport); }},
      {QStringLiteral("{@CompanyCode}"), [](Facts f) { return Quoted(CompanyCode(f)); }},
      {QStringLiteral("{@PrintMechanic}"), [](Facts f) { return QuotedFlag(f.options.PrintMechanic); }},
      {QStringLiteral("{@RemindersFont}"), [](Facts f) { return Quoted(f.options.RemindersFont); }},
      {QStringLiteral("{@RemindersFontSize}"), [](Facts f) { return QString::number(f.options.RemindersFontSize); }},
      {QStringLiteral("{@CompanyRegistrationDetails}"), [](Facts f) { return Quoted(f.options.CompanyRegDetails); }},
      {QStringLiteral("{@GoodsTerms}"), [](Facts f) { return QuotedLines(f.options.GoodsTerms); }},
      {QStringLiteral("{@PaymentMethods}"), [](Facts f) { return Quoted(f.options.PaymentMethods); }},
      {QStringLiteral("{@Period}"), [](Facts f) { return Quoted(Period(f)); }},
      {QStringLiteral("{@LabourDesc}"), [](Facts f) { return Quoted(f.options.LabourDesc); }},
      {QStringLiteral("{@CampaignName}"), [](Facts f) { return QuotedLines(f.campaign.record.Campaign_Name); }},
      {QStringLiteral("{@CompanyName}"), [](Facts f) { return Quoted(f.options.Company); }},
      {QStringLiteral("{@CompanyAddress}"), address},
      {QStringLiteral("{@CompanyPostcode}"), [](Facts f) { return Quoted(Postcode(f)); }},
      {QStringLiteral("{@CompanyTelephone}"), [](Facts f) { return Quoted(f.options.CoTelNo); }},
      {QStringLiteral("{@CompanyAddress_Persist_CS}"), address},
      {QStringLiteral("{@CompanyAddress_Persist}"), address},
      {QStringLiteral("{@CompanyAddress_1}"), address},
  };
  return sources;
}

QString OneLine(QString formulaText) {
  return formulaText.remove(QLatin1String("\r\n")).remove(u'"');
}

void SetDate(Report& report, const QString& parameterField, const QString& text) {
  const QDate date = ParseTypedDate(text);
  if (date.isValid()) report.SetCurrentValue(parameterField, date.startOfDay(Qt::UTC));
}

}  // namespace

void SetReportParameter(Report& report, const QString& parameterField, const ReportFacts& facts) {
  if (parameterField == QLatin1String("{?@UserID}")) report.SetCurrentValue(parameterField, facts.startup.user);
  if (parameterField == QLatin1String("{?@SessionID}")) report.SetCurrentValue(parameterField, facts.startup.RunKey);
  if (parameterField == QLatin1String("{?@CampaignID}"))
    report.SetCurrentValue(parameterField, facts.campaign.record.ID);
  if (parameterField == QLatin1String("{?@DateFrom}")) SetDate(report, parameterField, facts.state.dateFromText);
  if (parameterField == QLatin1String("{?@DateTo}")) SetDate(report, parameterField, facts.state.dateToText);
}

std::optional<QString> ReportFormulaText(const QString& formulaField, const ReportFacts& facts) {
  const FormulaSource source = FormulaSources().value(formulaField, nullptr);
  return source == nullptr ? std::nullopt : std::optional(source(facts));
}

void SetReportFormula(Report& report, const QString& formulaField, const ReportFacts& facts, ReportState& state) {
  const QString current = OneLine(report.FormulaText(formulaField));
  if (formulaField == QLatin1String("{@ReportTitle}")) state.reportTitle = current;
  if (formulaField == QLatin1String("{@Landscape}")) state.landscape = current.toUpper() == QLatin1String("YES");
  if (const auto text = ReportFormulaText(formulaField, facts)) report.SetFormulaText(formulaField, *text);
}

QString EscapeFormulaText(const QString& text) {
  const QString lineBreak = QStringLiteral("\" + Chr(10) + \"");
  QString escaped = text;
  return escaped.replace(QLatin1String("\r\n"), lineBreak).replace(u'\n', lineBreak).replace(u'\r', lineBreak);
}

QString ReportFileTitle(const QString& path) {
  const qsizetype folder = std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/'));
  return path.mid(folder + 1).chopped(std::min<qsizetype>(4, path.size() - folder - 1));
}

}  // namespace qbx
