// The one object through which a scenario's JavaScript reaches C++, and C++ the scenario.

#pragma once

#include <QHash>
#include <QJSEngine>
#include <QObject>
#include <QVariant>
#include <functional>

namespace qbx::scenario {

using Arguments = QVariantList;

/// \return the result, an invalid QVariant for none. \throws ScenarioError
using Command = std::function<QVariant(const Arguments&)>;

/// Commands by name; prelude.js makes the pleasant functions of them. It also registers its own functions here ("box",
/// "window", "menu", "pump"), which C++ calls when something happens while a command runs.
class Bridge : public QObject {
  Q_OBJECT
 public:
  explicit Bridge(QJSEngine& engine) : engine_(engine) {}

  void Add(const QString& name, Command command) { commands_.insert(name, std::move(command)); }
  /// Runs a command. Its failure is thrown as a JavaScript exception.
  Q_INVOKABLE QJSValue call(const QString& name, const QJSValue& arguments);
  /// Registers a function of the prelude.
  Q_INVOKABLE void handle(const QString& event, const QJSValue& function) { handlers_.insert(event, function); }

  /// Calls a registered function, also while another call into the scenario has not returned.
  /// \return what it returned; the prelude's functions catch what the scenario throws
  QVariant Invoke(const QString& event, const Arguments& arguments = {});

 private:
  QJSEngine& engine_;
  QHash<QString, Command> commands_;
  QHash<QString, QJSValue> handlers_;
};

/// An argument as text; empty when it was left out.
[[nodiscard]] QString TextAt(const Arguments& arguments, int index);
[[nodiscard]] int NumberAt(const Arguments& arguments, int index, int missing = 0);
[[nodiscard]] bool IsNumber(const QVariant& value);
/// A list, also of an argument that is no list but one value.
[[nodiscard]] QVariantList ListAt(const Arguments& arguments, int index);

}  // namespace qbx::scenario
