// The formulas of a report definition.

#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "database/value.h"

namespace qbx {

/// The kinds of names in a formula.
enum class FormulaName { kField, kFormula, kParameter };

/// Gives the value of a name: a field "Customer", a formula "@Period" or a parameter "@UserID".
using FormulaLookup = std::function<Value(FormulaName kind, const QString& name)>;

/// An expression that gives a text: "Period: " + {?@From} + Chr(10) + {Customer}.
///
///   formula = operand { "+" operand }
///   operand = string | number | "Chr" "(" number ")" | "{" field "}" | "{@" formula "}" | "{?" parameter "}"
///
/// A string is in double or single quotes; a quote inside it is doubled. Numbers are added, anything else is joined as
/// text. A field may be preceded by its table ("{Letters.Customer}").
class Formula {
 public:
  Formula() = default;  ///< the empty text

  /// \throws ReportError with the place of the fault in the formula
  [[nodiscard]] static Formula Parse(const QString& text);

  /// As it was written.
  [[nodiscard]] const QString& Text() const { return text_; }
  [[nodiscard]] Value Evaluate(const FormulaLookup& lookup) const;
  /// The names in the formula, in their order.
  [[nodiscard]] QStringList Names(FormulaName kind) const;

 private:
  struct Operand {
    Value literal = {};
    FormulaName kind = FormulaName::kField;
    QString name = {};  ///< empty for a literal
  };

  QString text_;
  std::vector<Operand> operands_;

  friend class FormulaParser;
};

}  // namespace qbx
