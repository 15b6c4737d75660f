#include "reports/report_values.h"

#include <QLocale>

namespace qbx {

namespace {

void CollectSums(const ReportSection& section, QStringList& fields) {
  for (const ReportObject& object : section.objects) {
    const auto* text = std::get_if<TextObject>(&object.what);
    if (text == nullptr) continue;
    for (const TextPiece& piece : text->pieces)
      if (piece.kind == PieceKind::kSum && !fields.contains(piece.name)) fields += piece.name;
  }
}

QString FormatNumber(double number, const QString& format) {
  const qsizetype point = format.indexOf(u'.');
  const int decimals = point < 0 ? 0 : static_cast<int>(format.size() - point - 1);
  QLocale locale = QLocale::c();
  locale.setNumberOptions(format.contains(u',') ? QLocale::DefaultNumberOptions : QLocale::OmitGroupSeparator);
  return locale.toString(number, 'f', decimals);
}

bool IsMark(QChar c) {
  return c >= kPagesMark && c <= kGroupPagesMark;
}

QString WithoutMarks(QString text) {
  return text.removeIf(&IsMark);
}

}  // namespace

ColumnNames::ColumnNames(const std::vector<Column>& columns) {
  for (int i = static_cast<int>(columns.size()) - 1; i >= 0; --i)
    byName_.insert(columns[static_cast<size_t>(i)].name.toLower(), i);
}

int ColumnNames::IndexOf(const QString& name) const {
  if (const auto found = written_.constFind(name); found != written_.constEnd()) return *found;
  return *written_.insert(name, byName_.value(name.toLower(), -1));
}

Value ReportRow::Field(const QString& name) const {
  const int column = columns ? columns->IndexOf(name) : -1;
  return column < 0 ? Value() : values[static_cast<size_t>(column)];
}

ReportTotals::ReportTotals(const ReportDefinition& report) : levels_(report.groups.size() + 1) {
  ForEachSection(report, [this](const ReportSection& section) { CollectSums(section, fields_); });
}

void ReportTotals::Add(const ReportRow& row) {
  for (Level& level : levels_) {
    ++level.count;
    for (const QString& field : fields_)
      level.sums[field] += row.Field(field).ToDouble();
  }
}

void ReportTotals::Restart(size_t level) {
  levels_[level] = {};
}

QString ReportValues::Text(const TextObject& object) const {
  QString text;
  for (size_t i = 0; i < object.pieces.size(); ++i) {
    const TextPiece& piece = object.pieces[i];
    const bool beforePages = i + 1 < object.pieces.size() && object.pieces[i + 1].kind == PieceKind::kPages;
    switch (piece.kind) {
      case PieceKind::kLiteral:
        text += beforePages ? kBeforePagesMark + piece.name : piece.name;
        break;
      case PieceKind::kPages:
        text += kPagesMark;
        break;
      case PieceKind::kGroupPages:
        text += kGroupPagesMark;
        break;
      default:
        text += WithoutMarks(FormatValue(ValueOf(piece), piece.format));
    }
  }
  return text;
}

Value ReportValues::ValueOf(const TextPiece& piece) const {
  switch (piece.kind) {
    case PieceKind::kField:
      return row.Field(piece.name);
    case PieceKind::kParameter:
      return parameters.value(piece.name);
    case PieceKind::kFormula: {
      const auto found = std::ranges::find(report.formulas, piece.name, &FormulaDefinition::name);
      return found == report.formulas.end() ? Value() : Evaluate(found->formula);
    }
    case PieceKind::kSum:
      return totals.Sum(level, piece.name);
    case PieceKind::kCount:
      return totals.Count(level);
    case PieceKind::kPage:
      return numbers.page;
    case PieceKind::kGroupPage:
      return numbers.groupPage;
    case PieceKind::kGroupNumber:
      return numbers.groupNumber;
    default:
      return {};
  }
}

Value ReportValues::Evaluate(const Formula& formula) const {
  return formula.Evaluate([this](FormulaName kind, const QString& name) {
    const PieceKind piece = kind == FormulaName::kField     ? PieceKind::kField
                            : kind == FormulaName::kFormula ? PieceKind::kFormula
                                                            : PieceKind::kParameter;
    return ValueOf({piece, name});
  });
}

QString FormatValue(const Value& value, const QString& format) {
  if (format.isEmpty() || value.IsNull()) return value.ToText();
  switch (value.Type()) {
    case ValueType::kDateTime:
      return value.ToDateTime().toString(format);
    case ValueType::kBool:
      return format.section(u'|', value.ToBool() ? 0 : 1, value.ToBool() ? 0 : 1);
    case ValueType::kInt:
    case ValueType::kDouble:
    case ValueType::kDecimal:
      return FormatNumber(value.ToDouble(), format);
    default:
      return value.ToText();
  }
}

}  // namespace qbx
