#include "bridge.h"

#include <QMetaMethod>
#include <array>

namespace qbx::scenario {
namespace {

QVariant AsParameter(const QVariant& argument, QMetaType type) {
  if (type.id() == QMetaType::QString) return argument.toString();
  if (type.id() == QMetaType::QVariantMap) return argument.toMap();
  if (type.id() == QMetaType::Bool) return argument.toBool();
  return IsNumber(argument) ? static_cast<int>(argument.toDouble()) : 0;
}

}  // namespace

void Bridge::Add(QObject& commands) {
  const QMetaObject& type = *commands.metaObject();
  for (int i = QObject::staticMetaObject.methodCount(); i < type.methodCount(); ++i) {
    const QString name = QString::fromLatin1(type.method(i).name());
    commands_.insert(name, &commands);
    if (type.method(i).methodType() == QMetaMethod::Method) functions_ += name;
  }
}

QJSValue Bridge::call(const QString& name, const QJSValue& arguments) {
  QVariant result;
  QString problem;
  try {
    if (QObject* object = commands_.value(name); object != nullptr)
      result = CallMethod(*object, MethodOf(*object->metaObject(), name), arguments.toVariant().toList());
    else
      problem = QStringLiteral("The runner has no command \"%1\".").arg(name);
  } catch (const std::exception& error) {
    problem = QString::fromUtf8(error.what());
    if (problem.isEmpty()) problem = QStringLiteral("failed");
  }
  // Outside the handler, because the engine leaves functions with jumps.
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

QMetaMethod MethodOf(const QMetaObject& type, const QString& name) {
  for (int i = type.methodCount() - 1; i >= QObject::staticMetaObject.methodCount(); --i) {
    if (type.method(i).name() == name.toLatin1()) return type.method(i);
  }
  return {};
}

QVariant CallMethod(QObject& object, const QMetaMethod& method, const Arguments& arguments) {
  const QMetaType variant = QMetaType::fromType<QVariant>();
  const bool anything = method.returnMetaType() == variant;
  QVariant result = anything || method.returnType() == QMetaType::Void ? QVariant() : QVariant(method.returnMetaType());
  QVariantList parameters(method.parameterCount());
  std::array<void*, 8> places = {anything ? &result : result.data()};
  for (int i = 0; i < method.parameterCount(); ++i) {
    const bool asItIs = method.parameterMetaType(i) == variant;
    parameters[i] = asItIs ? arguments.value(i) : AsParameter(arguments.value(i), method.parameterMetaType(i));
    places.at(static_cast<std::size_t>(i) + 1) = asItIs ? &parameters[i] : parameters[i].data();
  }
  object.qt_metacall(QMetaObject::InvokeMetaMethod, method.methodIndex(), places.data());
  return result;
}

bool IsNumber(const QVariant& value) {
  return value.typeId() == QMetaType::Int || value.typeId() == QMetaType::Double ||
         value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::UInt;
}

QVariantList ListOf(const QVariant& value) {
  if (value.typeId() == QMetaType::QVariantList) return value.toList();
  return value.isValid() ? QVariantList{value} : QVariantList{};
}

}  // namespace qbx::scenario
