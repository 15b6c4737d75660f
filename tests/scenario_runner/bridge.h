// Connects the JavaScript of a scenario with C++, in both directions.

#pragma once

#include <QHash>
#include <QJSEngine>
#include <QObject>
#include <QVariant>

namespace qbx::scenario {

using Arguments = QVariantList;

/// Commands by name. They are the methods of objects in Qt's meta-object system. prelude.js turns them into the
/// functions of a scenario. It also registers functions here ("box", "window", "menu", "pump"), which C++ calls when
/// something happens while a command runs.
class Bridge : public QObject {
  Q_OBJECT
 public:
  explicit Bridge(QJSEngine& engine) : engine_(engine) {}

  /// Adds the commands of an object. Its Q_INVOKABLE methods are functions of a scenario. Its slots are for the prelude
  /// only.
  void Add(QObject& commands);
  /// The names of the commands that are functions of a scenario.
  Q_INVOKABLE QStringList functions() const { return functions_; }
  /// Runs a command. A failure becomes a JavaScript exception.
  Q_INVOKABLE QJSValue call(const QString& name, const QJSValue& arguments);
  /// Registers a function of the prelude.
  Q_INVOKABLE void handle(const QString& event, const QJSValue& function) { handlers_.insert(event, function); }

  /// Calls a registered function, also while another call into the scenario has not returned.
  /// \return its result; the prelude's functions catch exceptions of the scenario
  QVariant Invoke(const QString& event, const Arguments& arguments = {});

 private:
  QJSEngine& engine_;
  QHash<QString, QObject*> commands_;
  QStringList functions_;
  QHash<QString, QJSValue> handlers_;
};

/// The method of a name, without the methods of all QObjects; an invalid one when there is none.
[[nodiscard]] QMetaMethod MethodOf(const QMetaObject& type, const QString& name);
/// Calls a method. A missing argument, or one of another type than the parameter's, becomes empty, 0 or false.
/// \return the result, an invalid QVariant for none. \throws what the method throws
QVariant CallMethod(QObject& object, const QMetaMethod& method, const Arguments& arguments);

[[nodiscard]] bool IsNumber(const QVariant& value);
/// A value as a list: itself, or a list with it.
[[nodiscard]] QVariantList ListOf(const QVariant& value);

}  // namespace qbx::scenario
