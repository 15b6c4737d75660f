#include "reports/definition_checks.h"

#include <algorithm>

#include "reports/report_error.h"
#include "reports/report_statement_checks.h"

namespace qbx {

namespace {

/// The most characters of a formula with the formulas in it written out, and the deepest nesting of formulas. No
/// formula that a person wrote has more.
constexpr qint64 kMaxWrittenOut = 65'536;
constexpr int kMaxFormulaDepth = 50;

/// The height of a section whose objects have not grown.
qreal HeightOf(const ReportSection& section) {
  qreal height = section.height;
  for (const ReportObject& object : section.objects)
    height = std::max(height, object.frame.bottom());
  return height;
}

class DefinitionChecks {
 public:
  DefinitionChecks(const ReportDefinition& report, const QString& file) : report_(report), file_(file) {}

  void Run() const {
    QHash<QString, qint64> lengths;
    for (const FormulaDefinition& formula : report_.formulas)
      static_cast<void>(LengthOf(formula, lengths, 0));
    if (report_.source) CheckSource(*report_.source);
    if (std::ranges::count_if(report_.groups, &ReportGroup::restartPages) > 1)
      Fail(0, QStringLiteral("Only one group can count its own pages."));
    if (std::ranges::any_of(report_.groups, &ReportGroup::drillDown)) CheckDrillDown();
    ForEachSection(report_, [this](const ReportSection& section) { CheckSection(section); });
  }

  void CheckRoom() const {
    const ReportPaper& paper = report_.paper;
    const qreal room = std::min(RoomOn(OnPages::kFirst), RoomOn(OnPages::kLater));
    if (room < kLeastBodyHeight || SheetOf(paper).width() - paper.left - paper.right < kLeastBodyHeight)
      Fail(0, QStringLiteral("Margins, page headers and page footers leave no room for rows."));
    CheckHeights(report_, room);
  }

 private:
  [[noreturn]] void Fail(int line, const QString& text) const { throw ReportError{text, file_, line}; }

  /// The height without margins, page headers and page footers.
  [[nodiscard]] qreal RoomOn(OnPages pages) const {
    qreal height = SheetOf(report_.paper).height() - report_.paper.top - report_.paper.bottom;
    for (const auto* sections : {&report_.pageHeaders, &report_.pageFooters})
      for (const ReportSection& section : *sections)
        if (section.pages == OnPages::kAll || section.pages == pages) height -= section.height;
    return height;
  }

  /// A section that is taller than a page before it grows would never fit.
  void CheckHeights(const ReportDefinition& part, qreal room) const {
    ForEachSection(part, [&](const ReportSection& section) {
      if (HeightOf(section) > room + kLayoutTolerance && !IsOfPages(section))
        Fail(section.line, QStringLiteral("The section is taller than the room for rows on a page."));
      for (const ReportObject& object : section.objects)
        if (const auto* subreport = std::get_if<SubreportObject>(&object.what))
          CheckHeights(*subreport->definition, room);
    });
  }

  /// Whether a section is a header or footer of pages.
  [[nodiscard]] bool IsOfPages(const ReportSection& section) const {
    const auto isThis = [&section](const ReportSection& other) { return &other == &section; };
    return std::ranges::any_of(report_.pageHeaders, isThis) || std::ranges::any_of(report_.pageFooters, isThis);
  }

  void CheckSource(const ReportSource& source) const {
    const QString statement = StatementShape(source);
    try {
      CheckOnlyReads(statement);
    } catch (const ReportError& error) {
      Fail(source.line, error.text);
    }
    for (const QString& name : ParametersOf(statement))
      CheckParameter(name, source.line);
  }

  /// A letter would count as printed although its text is hidden.
  void CheckDrillDown() const {
    if (std::ranges::any_of(report_.groups, &ReportGroup::restartPages))
      Fail(0, QStringLiteral("A report whose group counts its own pages has no drill-down."));
    for (const ReportGroup& group : report_.groups)
      if (group.drillDown && !group.header && !group.footer)
        Fail(0, QStringLiteral("The group \"%1\" hides its rows and shows nothing itself.").arg(group.field));
  }

  static QString StatementShape(const ReportSource& source) {
    if (!source.query.isEmpty()) return source.query;
    return QStringLiteral("SELECT * FROM [%1] WHERE %2 ORDER BY %3").arg(source.name, source.where, source.orderBy);
  }

  [[nodiscard]] bool HasParameter(const QString& name) const {
    return std::ranges::find(report_.parameters, name, &ParameterDefinition::name) != report_.parameters.end();
  }

  [[nodiscard]] const FormulaDefinition& FormulaNamed(const QString& name, int line) const {
    const auto found = std::ranges::find(report_.formulas, name, &FormulaDefinition::name);
    if (found == report_.formulas.end()) Fail(line, QStringLiteral("There is no formula \"%1\".").arg(name));
    return *found;
  }

  void CheckParameter(const QString& name, int line) const {
    if (!HasParameter(name)) Fail(line, QStringLiteral("There is no parameter \"%1\".").arg(name));
  }

  /// The number of characters of a formula with the formulas in it written out.
  /// \param known  lengths of formulas that were counted; -1 while a formula is being counted
  qint64 LengthOf(const FormulaDefinition& formula, QHash<QString, qint64>& known, int depth) const {
    if (const auto found = known.constFind(formula.name); found != known.constEnd()) {
      if (*found < 0) Fail(formula.line, QStringLiteral("The formula \"%1\" stands for itself.").arg(formula.name));
      return *found;
    }
    known.insert(formula.name, -1);
    for (const QString& name : formula.formula.Names(FormulaName::kParameter))
      CheckParameter(name, formula.line);
    qint64 length = formula.formula.Text().size();
    for (const QString& name : formula.formula.Names(FormulaName::kFormula)) {
      if (depth < kMaxFormulaDepth) length += LengthOf(FormulaNamed(name, formula.line), known, depth + 1);
      if (length > kMaxWrittenOut || depth >= kMaxFormulaDepth)
        Fail(formula.line, QStringLiteral("The formula \"%1\" is too long.").arg(formula.name));
    }
    known.insert(formula.name, length);
    return length;
  }

  void CheckSection(const ReportSection& section) const {
    for (const ReportObject& object : section.objects) {
      if (const auto* text = std::get_if<TextObject>(&object.what))
        for (const TextPiece& piece : text->pieces)
          CheckPiece(piece, object.line, IsOfPages(section));
      if (const auto* subreport = std::get_if<SubreportObject>(&object.what)) CheckSubreport(*subreport, object.line);
    }
  }

  void CheckPiece(const TextPiece& piece, int line, bool ofPages) const {
    if (piece.kind == PieceKind::kFormula) static_cast<void>(FormulaNamed(piece.name, line));
    if (piece.kind == PieceKind::kParameter) CheckParameter(piece.name, line);
    const bool ofGroup = piece.kind == PieceKind::kGroupPage || piece.kind == PieceKind::kGroupPages ||
                         piece.kind == PieceKind::kGroupNumber;
    if (ofGroup && std::ranges::none_of(report_.groups, &ReportGroup::restartPages))
      Fail(line, QStringLiteral("A page of a group is shown, but no group counts its own pages."));
    const bool ofPage =
        piece.kind == PieceKind::kPage || piece.kind == PieceKind::kGroupPage || piece.kind == PieceKind::kGroupNumber;
    if (ofPage && !ofPages)  // rows are filled in before they are put on pages
      Fail(line, QStringLiteral("The number of a page can stand in headers and footers of pages only."));
  }

  void CheckSubreport(const SubreportObject& subreport, int line) const {
    const DefinitionChecks checks(*subreport.definition, file_);
    checks.Run();
    if (std::ranges::any_of(subreport.definition->groups, &ReportGroup::drillDown))
      Fail(line, QStringLiteral("A subreport has no drill-down."));
    for (const SubreportObject::Link& link : subreport.links)
      checks.CheckParameter(link.parameter, line);
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

void CheckRoom(const ReportDefinition& report, const QString& file) {
  DefinitionChecks(report, file).CheckRoom();
}

}  // namespace qbx
