#include "reports/definition_checks.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>

#include "reports/report_error.h"

namespace qbx {

namespace {

/// Words that a statement which only reads does not need.
constexpr std::array kWordsThatWrite = {"insert", "update", "delete", "into",       "exec",      "execute",
                                        "drop",   "alter",  "create", "merge",      "truncate",  "grant",
                                        "revoke", "deny",   "begin",  "commit",     "rollback",  "declare",
                                        "set",    "use",    "backup", "restore",    "waitfor",   "shutdown",
                                        "bulk",   "dbcc",   "kill",   "openrowset", "openquery", "opendatasource"};

/// What a formula and those that it names may have of operands; more is no formula that a person wrote.
constexpr qint64 kMaxFormulaOperands = 10'000;

/// A statement without its comments, texts and quoted names: what is left is words and signs.
QString WithoutQuoted(const QString& statement) {
  static const QRegularExpression quoted(
      QStringLiteral("'(?:[^']|'')*'|\"[^\"]*\"|\\[[^\\]]*\\]|--[^\\n]*|/\\*.*?\\*/"),
      QRegularExpression::DotMatchesEverythingOption);
  return QString(statement).replace(quoted, QStringLiteral(" _ "));
}

class DefinitionChecks {
 public:
  DefinitionChecks(const ReportDefinition& report, const QString& file) : report_(report), file_(file) {}

  void Run() const {
    QHash<QString, qint64> operands;
    for (const FormulaDefinition& formula : report_.formulas)
      static_cast<void>(OperandsOf(formula, operands));
    if (report_.source) CheckOnlyReads(StatementShape(*report_.source), file_);
    if (std::ranges::count_if(report_.groups, &ReportGroup::restartPages) > 1)
      Fail(QStringLiteral("Only one group can count its own pages."));
    ForEachSection(report_, [this](const ReportSection& section) { CheckSection(section); });
  }

  void CheckRoom() const {
    const ReportPaper& paper = report_.paper;
    const QSizeF sheet = SheetOf(paper);
    for (const OnPages pages : {OnPages::kFirst, OnPages::kLater}) {
      qreal height = sheet.height() - paper.top - paper.bottom;
      for (const auto* sections : {&report_.pageHeaders, &report_.pageFooters})
        for (const ReportSection& section : *sections)
          if (section.pages == OnPages::kAll || section.pages == pages) height -= section.height;
      if (height < kLeastBodyHeight || sheet.width() - paper.left - paper.right < kLeastBodyHeight)
        Fail(QStringLiteral("Margins, page headers and page footers leave no room for rows."));
    }
  }

 private:
  [[noreturn]] void Fail(const QString& text) const { throw ReportError{text, file_}; }

  static QString StatementShape(const ReportSource& source) {
    if (!source.query.isEmpty()) return source.query;
    return QStringLiteral("SELECT * FROM [%1] WHERE %2 ORDER BY %3").arg(source.name, source.where, source.orderBy);
  }

  [[nodiscard]] bool HasParameter(const QString& name) const {
    return std::ranges::find(report_.parameters, name, &ParameterDefinition::name) != report_.parameters.end();
  }

  [[nodiscard]] const FormulaDefinition& FormulaNamed(const QString& name) const {
    const auto found = std::ranges::find(report_.formulas, name, &FormulaDefinition::name);
    if (found == report_.formulas.end()) Fail(QStringLiteral("There is no formula \"%1\".").arg(name));
    return *found;
  }

  void CheckParameter(const QString& name) const {
    if (!HasParameter(name)) Fail(QStringLiteral("There is no parameter \"%1\".").arg(name));
  }

  /// The operands that the formula and those that it names have in all.
  /// \param known  of those that were counted; 0 for one that is being counted
  qint64 OperandsOf(const FormulaDefinition& formula, QHash<QString, qint64>& known) const {
    if (const auto found = known.constFind(formula.name); found != known.constEnd()) {
      if (*found == 0) Fail(QStringLiteral("The formula \"%1\" stands for itself.").arg(formula.name));
      return *found;
    }
    known.insert(formula.name, 0);
    for (const QString& name : formula.formula.Names(FormulaName::kParameter))
      CheckParameter(name);
    qint64 count = 1;
    for (const QString& name : formula.formula.Names(FormulaName::kFormula))
      count += OperandsOf(FormulaNamed(name), known);
    if (count > kMaxFormulaOperands) Fail(QStringLiteral("The formula \"%1\" is too long.").arg(formula.name));
    known.insert(formula.name, count);
    return count;
  }

  void CheckSection(const ReportSection& section) const {
    for (const ReportObject& object : section.objects) {
      if (const auto* text = std::get_if<TextObject>(&object.what))
        for (const TextPiece& piece : text->pieces)
          CheckPiece(piece);
      if (const auto* subreport = std::get_if<SubreportObject>(&object.what)) CheckSubreport(*subreport);
    }
  }

  void CheckPiece(const TextPiece& piece) const {
    if (piece.kind == PieceKind::kFormula) static_cast<void>(FormulaNamed(piece.name));
    if (piece.kind == PieceKind::kParameter) CheckParameter(piece.name);
    const bool ofGroup = piece.kind == PieceKind::kGroupPage || piece.kind == PieceKind::kGroupPages ||
                         piece.kind == PieceKind::kGroupNumber;
    if (ofGroup && std::ranges::none_of(report_.groups, &ReportGroup::restartPages))
      Fail(QStringLiteral("A page of a group is shown, but no group counts its own pages."));
  }

  void CheckSubreport(const SubreportObject& subreport) const {
    const DefinitionChecks checks(*subreport.definition, file_);
    checks.Run();
    for (const SubreportObject::Link& link : subreport.links)
      checks.CheckParameter(link.parameter);
  }

  const ReportDefinition& report_;
  QString file_;
};

}  // namespace

void CheckDefinition(const ReportDefinition& report, const QString& file) {
  const DefinitionChecks checks(report, file);
  checks.Run();
  checks.CheckRoom();
}

void CheckOnlyReads(const QString& statement, const QString& file) {
  static const QRegularExpression word(QStringLiteral("[A-Za-z_][A-Za-z0-9_]*"));
  const QString bare = WithoutQuoted(statement).trimmed();
  const auto refuse = [&file](const QString& text) { throw ReportError{text, file}; };
  if (!bare.startsWith(QLatin1String("select"), Qt::CaseInsensitive))
    refuse(QStringLiteral("The rows of a report must come from one SELECT."));
  if (bare.contains(u';') || bare.contains(u'\'') || bare.contains(u'[') || bare.contains(QLatin1String("/*")))
    refuse(QStringLiteral("The rows of a report must come from one statement."));
  for (auto match = word.globalMatch(bare); match.hasNext();) {
    const QString found = match.next().captured();
    if (std::ranges::any_of(kWordsThatWrite, [&](const char* writes) {
          return found.compare(QLatin1String(writes), Qt::CaseInsensitive) == 0;
        }))
      refuse(QStringLiteral("A report only reads; its statement has the word \"%1\".").arg(found));
  }
}

}  // namespace qbx
