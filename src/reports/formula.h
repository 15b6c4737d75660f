// The formulas of a report definition.

#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "database/value.h"

namespace qbx {

/// Names that a formula may stand for.
enum class FormulaName { kField, kFormula, kParameter };

/// Gives the value behind a name: of a field "Customer", a formula "@Period" or a parameter "@UserID".
using FormulaLookup = std::function<Value(FormulaName kind, const QString& name)>;

/// Text that is put together: "Period: " + {?@From} + Chr(10) + {Customer}.
///
///   formula = operand { "+" operand }
///   operand = string | number | "Chr" "(" number ")" | "{" field "}" | "{@" formula "}" | "{?" parameter "}"
///
/// Strings stand in double or single quotes, a quote inside one is doubled. Numbers are added, anything else is joined as text. A field may have its
/// table in front ("{Letters.Customer}").
class Formula {
 public:
  Formula() = default;  ///< empty text

  /// \throws ReportError saying where in the formula it goes wrong
  [[nodiscard]] static Formula Parse(const QString& text);

  /// As it was written.
  [[nodiscard]] const QString& Text() const { return text_; }
  [[nodiscard]] Value Evaluate(const FormulaLookup& lookup) const;
  /// The names that it refers to, in their order.
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
