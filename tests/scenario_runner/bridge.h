// The one object through which a scenario's JavaScript reaches C++, and C++ the scenario.

#pragma once

#include <QHash>
#include <QJSEngine>
#include <QObject>
#include <QVariant>

namespace qbx::scenario {

using Arguments = QVariantList;

/// Commands by name: the methods that objects give to Qt's meta-object system. prelude.js makes the pleasant functions
/// of them. It also registers its own functions here ("box", "window", "menu", "pump"), which C++ calls when something
/// happens while a command runs.
class Bridge : public QObject {
  Q_OBJECT
 public:
  explicit Bridge(QJSEngine& engine) : engine_(engine) {}

  /// Takes the commands of an object. Its Q_INVOKABLE methods are functions of a scenario as they stand; its slots are
  /// for the prelude.
  void Add(QObject& commands);
  /// Names of the commands that are functions of a scenario as they stand.
  Q_INVOKABLE QStringList functions() const { return functions_; }
  /// Runs a command. Its failure is thrown as a JavaScript exception.
  Q_INVOKABLE QJSValue call(const QString& name, const QJSValue& arguments);
  /// Registers a function of the prelude.
  Q_INVOKABLE void handle(const QString& event, const QJSValue& function) { handlers_.insert(event, function); }

  /// Calls a registered function, also while another call into the scenario has not returned.
  /// \return what it returned; the prelude's functions catch what the scenario throws
  QVariant Invoke(const QString& event, const Arguments& arguments = {});

 private:
  QJSEngine& engine_;
  QHash<QString, QObject*> commands_;
  QStringList functions_;
  QHash<QString, QJSValue> handlers_;
};

/// The method of that name, which is not one of every QObject; an invalid one when there is none.
[[nodiscard]] QMetaMethod MethodOf(const QMetaObject& type, const QString& name);
/// Calls it with the arguments as its parameters want them: an argument that was left out or is of another kind is
/// empty, 0 or false.
/// \return the result, an invalid QVariant for none. \throws what the method throws
QVariant CallMethod(QObject& object, const QMetaMethod& method, const Arguments& arguments);

[[nodiscard]] bool IsNumber(const QVariant& value);
/// A list, also of a value that is none.
[[nodiscard]] QVariantList ListOf(const QVariant& value);

}  // namespace qbx::scenario
