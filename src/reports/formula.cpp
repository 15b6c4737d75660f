#include "reports/formula.h"

#include "reports/report_error.h"

namespace qbx {

namespace {

constexpr qsizetype kMaxFormulaCharacters = 65'536;

}  // namespace

/// Reads operand after operand.
class FormulaParser {
 public:
  explicit FormulaParser(const QString& text) : text_(text) {}

  std::vector<Formula::Operand> Operands() {
    std::vector<Formula::Operand> operands;
    SkipBlanks();
    if (AtEnd()) return operands;
    operands.push_back(Operand());
    for (SkipBlanks(); !AtEnd(); SkipBlanks()) {
      if (!Take(u'+')) Fail(QStringLiteral("a \"+\" is missing"));
      SkipBlanks();
      operands.push_back(Operand());
    }
    return operands;
  }

 private:
  [[nodiscard]] bool AtEnd() const { return at_ >= text_.size(); }
  [[nodiscard]] QChar Peek() const { return AtEnd() ? QChar() : text_[at_]; }
  void SkipBlanks() {
    while (!AtEnd() && text_[at_].isSpace())
      ++at_;
  }
  bool Take(QChar wanted) {
    if (Peek() != wanted) return false;
    ++at_;
    return true;
  }
  [[noreturn]] void Fail(const QString& what) const {
    throw ReportError{QStringLiteral("The formula is wrong at character %1: %2.").arg(at_ + 1).arg(what)};
  }

  Formula::Operand Operand() {
    const QChar first = Peek();
    if (first == u'"' || first == u'\'') return {Value(String(first))};
    if (first.isDigit() || first == u'-' || first == u'.') return {Value(Number())};
    if (first == u'{') return Name();
    if (text_.mid(at_, 3).compare(QLatin1String("Chr"), Qt::CaseInsensitive) == 0) return {Value(Character())};
    Fail(QStringLiteral("a text, a number, Chr(n) or a name in braces is missing"));
  }

  QString String(QChar quote) {
    QString value;
    for (++at_; !AtEnd(); ++at_) {
      if (text_[at_] == quote) {
        ++at_;
        if (Peek() != quote) return value;
      }
      value += text_[at_];
    }
    Fail(QStringLiteral("the text has no end"));
  }

  double Number() {
    const qsizetype start = at_;
    Take(u'-');
    while (Peek().isDigit() || Peek() == u'.')
      ++at_;
    bool isNumber = false;
    const double value = text_.mid(start, at_ - start).toDouble(&isNumber);
    if (!isNumber) Fail(QStringLiteral("this is no number"));
    return value;
  }

  QString Character() {
    at_ += 3;
    SkipBlanks();
    if (!Take(u'(')) Fail(QStringLiteral("a \"(\" is missing"));
    SkipBlanks();
    const double code = Number();
    SkipBlanks();
    if (!Take(u')')) Fail(QStringLiteral("a \")\" is missing"));
    if (code < 1 || code > 0xFFFF) Fail(QStringLiteral("there is no such character"));
    return QString(QChar(static_cast<char16_t>(code)));
  }

  Formula::Operand Name() {
    const qsizetype end = text_.indexOf(u'}', at_);
    if (end < 0) Fail(QStringLiteral("a \"}\" is missing"));
    QString name = text_.mid(at_ + 1, end - at_ - 1).trimmed();
    FormulaName kind = FormulaName::kField;
    if (name.startsWith(u'@')) {
      kind = FormulaName::kFormula;
    } else if (name.startsWith(u'?')) {
      kind = FormulaName::kParameter;
      name.remove(0, 1);
    } else {
      name = name.mid(name.lastIndexOf(u'.') + 1);
    }
    if (name.isEmpty()) Fail(QStringLiteral("there is no name between the braces"));
    at_ = end + 1;
    return {Value(), kind, name};
  }

  const QString& text_;
  qsizetype at_ = 0;
};

Formula Formula::Parse(const QString& text) {
  if (text.size() > kMaxFormulaCharacters)
    throw ReportError{QStringLiteral("A formula has more than %1 characters.").arg(kMaxFormulaCharacters)};
  Formula formula;
  formula.text_ = text;
  formula.operands_ = FormulaParser(text).Operands();
  return formula;
}

namespace {

bool IsNumber(const Value& value) {
  switch (value.Type()) {
    case ValueType::kInt:
    case ValueType::kDouble:
    case ValueType::kDecimal:
      return true;
    default:
      return false;
  }
}

Value Joined(const Value& left, const Value& right) {
  if (IsNumber(left) && IsNumber(right)) return left.ToDouble() + right.ToDouble();
  return left.ToText() + right.ToText();
}

}  // namespace

Value Formula::Evaluate(const FormulaLookup& lookup) const {
  Value result(QString{});
  for (size_t i = 0; i < operands_.size(); ++i) {
    const Operand& operand = operands_[i];
    const Value value = operand.name.isEmpty() ? operand.literal : lookup(operand.kind, operand.name);
    result = i == 0 ? value : Joined(result, value);
    if (result.Type() == ValueType::kText && result.ToText().size() > kMaxFormulaCharacters) break;
  }
  return result;
}

QStringList Formula::Names(FormulaName kind) const {
  QStringList names;
  for (const Operand& operand : operands_)
    if (!operand.name.isEmpty() && operand.kind == kind) names += operand.name;
  return names;
}

}  // namespace qbx
