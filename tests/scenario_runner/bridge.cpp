#include "bridge.h"

#include "scenario_error.h"

namespace qbx::scenario {

QJSValue Bridge::call(const QString& name, const QJSValue& arguments) {
  const auto found = commands_.constFind(name);
  if (found == commands_.constEnd()) {
    engine_.throwError(QStringLiteral("The runner has no command \"%1\".").arg(name));
    return {};
  }
  const Command command = found.value();
  QVariant result;
  QString problem;
  try {
    result = command(arguments.toVariant().toList());
  } catch (const std::exception& error) {
    problem = QString::fromUtf8(error.what());
    if (problem.isEmpty()) problem = QStringLiteral("failed");
  }
  // Outside the handler: the engine unwinds with jumps of its own.
  if (!problem.isEmpty()) {
    engine_.throwError(problem);
    return {};
  }
  return result.isValid() ? engine_.toScriptValue(result) : QJSValue();
}

QVariant Bridge::Invoke(const QString& event, const Arguments& arguments) {
  const QJSValue function = handlers_.value(event);
  if (!function.isCallable()) return {};
  QJSValueList values;
  for (const QVariant& argument : arguments)
    values += engine_.toScriptValue(argument);
  return function.call(values).toVariant();
}

QString TextAt(const Arguments& arguments, int index) {
  return arguments.value(index).toString();
}

int NumberAt(const Arguments& arguments, int index, int missing) {
  const QVariant value = arguments.value(index);
  return IsNumber(value) ? static_cast<int>(value.toDouble()) : missing;
}

bool IsNumber(const QVariant& value) {
  return value.typeId() == QMetaType::Int || value.typeId() == QMetaType::Double ||
         value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::UInt;
}

QVariantList ListAt(const Arguments& arguments, int index) {
  const QVariant value = arguments.value(index);
  if (value.typeId() == QMetaType::QVariantList) return value.toList();
  return value.isValid() ? QVariantList{value} : QVariantList{};
}

}  // namespace qbx::scenario
