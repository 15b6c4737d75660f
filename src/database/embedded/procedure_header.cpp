// Reads the header of a stored procedure, and converts values to its parameters.

#include <cmath>

#include "database/embedded/errors.h"
#include "database/embedded/procedures.h"
#include "database/embedded/translator.h"

namespace qbx {
namespace {

struct TypeWord {
  const char* name;
  ValueType type;
};

constexpr TypeWord kTypes[] = {
    {"bit", ValueType::kBool},        {"tinyint", ValueType::kInt},       {"smallint", ValueType::kInt},
    {"int", ValueType::kInt},         {"bigint", ValueType::kInt},        {"float", ValueType::kDouble},
    {"real", ValueType::kDouble},     {"money", ValueType::kDecimal},     {"decimal", ValueType::kDecimal},
    {"numeric", ValueType::kDecimal}, {"datetime", ValueType::kDateTime}, {"date", ValueType::kDateTime},
    {"nvarchar", ValueType::kText},   {"varchar", ValueType::kText},      {"nchar", ValueType::kText},
    {"char", ValueType::kText},       {"ntext", ValueType::kText},        {"text", ValueType::kText},
};

class HeaderReader {
 public:
  explicit HeaderReader(std::string_view header) { Tokenize(header, tokens_); }

  ProcedureHeader Read() {
    Expect("CREATE");
    Expect("PROCEDURE");
    ProcedureHeader header;
    header.name = Name();
    if (AtSymbol(".")) {
      ++at_;
      header.name = Name();
    }
    while (!Done() && Current().kind == TokenKind::kParameter) {
      header.parameters.push_back(ReadParameter());
      if (!AtSymbol(",")) break;
      ++at_;
    }
    if (!Done()) Expect("AS");
    return header;
  }

 private:
  [[nodiscard]] bool Done() const { return at_ >= tokens_.size(); }
  [[nodiscard]] const Token& Current() const {
    if (Done()) ThrowSyntaxError(tokens_.empty() ? std::string_view() : tokens_.back().text);
    return tokens_[at_];
  }
  [[nodiscard]] bool AtSymbol(std::string_view symbol) const { return !Done() && tokens_[at_].IsSymbol(symbol); }
  void Expect(std::string_view word) {
    if (!Current().IsWord(word)) ThrowSyntaxError(Current().text);
    ++at_;
  }
  QString Name() {
    QString name = QString::fromStdString(Current().Content());
    ++at_;
    return name;
  }

  DeclaredParameter ReadParameter() {
    DeclaredParameter parameter;
    parameter.name = Name();
    ReadType(parameter);
    if (!AtSymbol("=")) return parameter;
    ++at_;
    const bool negative = AtSymbol("-");
    if (negative) ++at_;
    const Token& token = Current();
    const bool isLiteral = token.kind == TokenKind::kNumber || token.kind == TokenKind::kString;
    if (!isLiteral && !token.IsWord("NULL")) ThrowSyntaxError(token.text);
    parameter.defaultValue = isLiteral ? LiteralValue(token, negative) : Value();
    ++at_;
    return parameter;
  }

  void ReadType(DeclaredParameter& parameter) {
    const std::string_view written = Current().text;
    parameter.typeName = Name().toLower();
    bool known = false;
    for (const TypeWord& word : kTypes) {
      if (parameter.typeName != QLatin1String(word.name)) continue;
      parameter.type = word.type;
      known = true;
    }
    if (!known) ThrowSyntaxError(written);
    if (parameter.typeName == QLatin1String("money")) parameter.scale = 4;
    if (!AtSymbol("(")) return;
    ++at_;
    parameter.size = Current().IsWord("MAX") ? 0 : static_cast<int>(LiteralValue(Current()).ToInt());
    ++at_;
    if (AtSymbol(",")) {
      ++at_;
      parameter.scale = static_cast<int>(LiteralValue(Current()).ToInt());
      ++at_;
    }
    if (!AtSymbol(")")) ThrowSyntaxError(Current().text);
    ++at_;
    if (parameter.type != ValueType::kText) parameter.size = 0;
  }

  std::vector<Token> tokens_;
  std::size_t at_ = 0;
};

[[noreturn]] void ThrowWrongType(const DeclaredParameter& parameter, const Value& value) {
  const bool fromText = value.Type() == ValueType::kText;
  throw ServerError(8114, QStringLiteral("Error converting data type %1 to %2.")
                              .arg(fromText                               ? QStringLiteral("nvarchar")
                                   : value.Type() == ValueType::kDateTime ? QStringLiteral("datetime")
                                                                          : QStringLiteral("float"),
                                   parameter.typeName));
}

double NumberOf(const DeclaredParameter& parameter, const Value& value) {
  if (value.Type() == ValueType::kDateTime) ThrowWrongType(parameter, value);
  if (value.Type() != ValueType::kText) return value.ToDouble();
  bool isNumber = false;
  const double number = value.ToText().trimmed().toDouble(&isNumber);
  if (!isNumber) ThrowWrongType(parameter, value);
  return number;
}

Value ToInteger(const DeclaredParameter& parameter, const Value& value) {
  const bool exact = value.Type() == ValueType::kInt || value.Type() == ValueType::kBool;
  const double number = exact ? static_cast<double>(value.ToInt()) : std::nearbyint(NumberOf(parameter, value));
  const double limit = parameter.typeName == QLatin1String("smallint")  ? 32767.0
                       : parameter.typeName == QLatin1String("int")     ? 2147483647.0
                       : parameter.typeName == QLatin1String("tinyint") ? 255.0
                                                                        : 9.2e18;
  if (number > limit || number < -limit - 1 || (limit == 255.0 && number < 0)) {
    throw ServerError(220, QStringLiteral("Arithmetic overflow error for data type %1, value = %2.")
                               .arg(parameter.typeName, QString::number(number, 'f', 0)));
  }
  return exact ? Value(value.ToInt()) : Value(static_cast<qint64>(number));
}

Value ToBit(const DeclaredParameter& parameter, const Value& value) {
  if (value.Type() == ValueType::kText) {
    const QString text = value.ToText().trimmed();
    if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) return Value(true);
    if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) return Value(false);
  }
  return Value(NumberOf(parameter, value) != 0);
}

Value ToDate(const DeclaredParameter& parameter, const Value& value) {
  if (value.Type() == ValueType::kDateTime) return value.ToDateTime().isValid() ? value : Value();
  if (value.Type() != ValueType::kText) ThrowWrongType(parameter, value);
  const QString text = value.ToText().trimmed();
  if (text.isEmpty()) return {};
  QDateTime when = value.ToDateTime();
  if (!when.isValid()) when = QDateTime(QDate::fromString(text, QStringLiteral("yyyyMMdd")), QTime(0, 0));
  if (!when.isValid()) ThrowWrongType(parameter, value);
  return Value(when);
}

Value ToSizedText(const DeclaredParameter& parameter, const Value& value) {
  const QString text = value.ToText();
  if (parameter.size > 0 && text.size() > parameter.size) {
    throw ServerError(8152, QStringLiteral("String or binary data would be truncated."));
  }
  return Value(text);
}

}  // namespace

ProcedureHeader ParseProcedureHeader(std::string_view header) {
  return HeaderReader(header).Read();
}

Value ConvertArgument(const DeclaredParameter& parameter, const Value& value) {
  if (value.IsNull()) return {};
  switch (parameter.type) {
    case ValueType::kBool:
      return ToBit(parameter, value);
    case ValueType::kInt:
      return ToInteger(parameter, value);
    case ValueType::kDouble:
    case ValueType::kDecimal:
      return Value(NumberOf(parameter, value));
    case ValueType::kDateTime:
      return ToDate(parameter, value);
    default:
      return ToSizedText(parameter, value);
  }
}

}  // namespace qbx
