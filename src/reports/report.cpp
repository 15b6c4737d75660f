#include "reports/report.h"

#include <algorithm>

#include "reports/definition_checks.h"
#include "reports/definition_loader.h"
#include "reports/hidden_columns.h"
#include "reports/report_error.h"
#include "reports/report_statement.h"

namespace qbx {

namespace {

/// The name in "{?@UserID}" or "{@Period}".
QString NameOf(const QString& field) {
  return field.mid(field.startsWith(QLatin1String("{?")) ? 2 : 1).chopped(1);
}

}  // namespace

Report Report::Open(const QString& path) {
  return Report(LoadDefinition(path));
}

Report::Report(std::shared_ptr<ReportDefinition> definition) : definition_(std::move(definition)) {
  FindParts(definition_);
  FindObjects();
}

void Report::FindParts(const std::shared_ptr<ReportDefinition>& part) {
  parts_.push_back(part);
  ForEachSection(*part, [this](ReportSection& section) {
    for (const ReportObject& object : section.objects)
      if (const auto* subreport = std::get_if<SubreportObject>(&object.what)) FindParts(subreport->definition);
  });
}

void Report::FindObjects() {
  objects_.clear();
  for (const auto& part : parts_)
    ForEachSection(*part, [this](ReportSection& section) {
      for (const ReportObject& object : section.objects) {
        if (objects_.size() <= static_cast<size_t>(object.id)) objects_.resize(static_cast<size_t>(object.id) + 1);
        objects_[static_cast<size_t>(object.id)] = &object;
      }
    });
}

QStringList Report::ParameterFields() const {
  QStringList fields;
  for (const auto& part : parts_)
    for (const ParameterDefinition& parameter : part->parameters)
      fields += QStringLiteral("{?%1}").arg(parameter.name);
  return fields;
}

void Report::SetCurrentValue(const QString& parameterField, const Value& value) {
  parameters_.insert(NameOf(parameterField), value);
}

QStringList Report::FormulaFields() const {
  QStringList fields;
  for (const auto& part : parts_)
    for (const FormulaDefinition& formula : part->formulas)
      fields += QStringLiteral("{%1}").arg(formula.name);
  return fields;
}

QString Report::FormulaText(const QString& formulaField) const {
  for (const auto& part : parts_)
    for (const FormulaDefinition& formula : part->formulas)
      if (formula.name == NameOf(formulaField)) return formula.formula.Text();
  return {};
}

void Report::SetFormulaText(const QString& formulaField, const QString& text) {
  for (const auto& part : parts_)
    for (FormulaDefinition& formula : part->formulas)
      if (formula.name == NameOf(formulaField)) formula.formula = Formula::Parse(text);
}

QStringList Report::Tables() const {
  QStringList names;
  for (const auto& part : parts_)
    if (part->source) names += part->source->name;
  return names;
}

void Report::SetTableLocations(const QString& filter) {
  for (const auto& part : parts_) {
    if (!part->source) continue;
    if (!part->source->query.isEmpty())
      throw ReportError{QStringLiteral("The query \"%1\" cannot be read elsewhere.").arg(part->source->name)};
    part->source->location = QString(filter).replace(u'%', part->source->name);
  }
}

bool Report::ShowsTotal() const {
  return std::ranges::any_of(objects_, [](const ReportObject* object) {
    const auto* text = object == nullptr ? nullptr : std::get_if<TextObject>(&object->what);
    return text != nullptr &&
           std::ranges::any_of(text->pieces, [](const TextPiece& piece) { return piece.kind == PieceKind::kPages; });
  });
}

bool Report::CountsDocuments() const {
  return std::ranges::any_of(definition_->groups, &ReportGroup::restartPages);
}

bool Report::OffersDrillDown() const {
  return std::ranges::any_of(definition_->groups, &ReportGroup::drillDown);
}

void Report::HideColumns(const QSet<QString>& fields) {
  for (const auto& part : parts_)
    qbx::HideColumns(*part, fields);
  FindObjects();
}

std::unique_ptr<Pager> Report::LayOut(ReportDatabase& database, const QStringList& group) const {
  CheckRoom(*definition_, {});  // the paper may have been turned
  const RowsReader reader = [&database](const ReportSource& source, const ReportDefinition& report,
                                        const ParameterValues& parameters) {
    return database.Read(StatementOf(source, report, parameters));
  };
  std::unique_ptr<ReportRows> rows;
  if (records_) {
    rows = RowsOfRecordset(records_->Clone());
  } else if (definition_->source) {
    rows = reader(*definition_->source, *definition_, parameters_);
  }
  return std::make_unique<Pager>(*definition_, parameters_, std::move(rows), reader, group);
}

}  // namespace qbx
