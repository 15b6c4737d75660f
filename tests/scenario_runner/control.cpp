#include "control.h"

#include "find_control.h"
#include "items_control.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

/// Qt's names of properties, by their names in scenarios.
const QHash<QString, QByteArray>& QtProperties() {
  static const QHash<QString, QByteArray> kNames = {{"enabled", "enabled"},   {"visible", "visible"},
                                                    {"toolTip", "toolTip"},   {"accessibleName", "accessibleName"},
                                                    {"shortcut", "shortcut"}, {"ticked", "checked"},
                                                    {"value", "value"},       {"maximum", "maximum"},
                                                    {"readOnly", "readOnly"}, {"placeholder", "placeholderText"}};
  return kNames;
}

// The line edit inside a control such as a date box.
const QLineEdit* InnerEdit(const QObject& control) {
  if (const auto* edit = qobject_cast<const QLineEdit*>(&control)) return edit;
  return control.isWidgetType() ? control.findChild<QLineEdit*>() : nullptr;
}

QString TextOfLabel(const QLabel& label) {
  const bool rich =
      label.textFormat() == Qt::RichText || (label.textFormat() == Qt::AutoText && Qt::mightBeRichText(label.text()));
  if (rich) return PlainLines(QTextDocumentFragment::fromHtml(label.text()).toPlainText());
  return PlainLines(label.buddy() != nullptr ? PlainCaption(label.text()) : label.text());
}

QVariant TextOf(const QObject& control) {
  if (IsOneOf<QAction, QAbstractButton>(&control)) return PlainCaption(control.property("text").toString());
  if (const auto* label = qobject_cast<const QLabel*>(&control)) return TextOfLabel(*label);
  if (const auto* box = qobject_cast<const QGroupBox*>(&control)) return PlainCaption(box->title());
  if (const auto* bar = qobject_cast<const QStatusBar*>(&control)) return bar->currentMessage();
  if (IsOneOf<QComboBox>(&control)) return control.property("currentText");
  if (IsOneOf<QTextEdit, QPlainTextEdit>(&control)) return PlainLines(control.property("plainText").toString());
  if (IsOneOf<QProgressBar>(&control)) return control.property("text");
  if (const QLineEdit* edit = InnerEdit(control)) return edit->text();
  return static_cast<const QWidget&>(control).isWindow() ? control.property("windowTitle") : QVariant();
}

}  // namespace

std::unique_ptr<Control> Control::Of(QObject& object, const QString& name) {
  if (auto* action = qobject_cast<QAction*>(&object)) return std::make_unique<ActionControl>(*action, name);
  if (auto* view = qobject_cast<QAbstractItemView*>(&object)) return std::make_unique<ItemsControl>(*view, name);
  if (auto* combo = qobject_cast<QComboBox*>(&object)) return std::make_unique<ComboControl>(*combo, name);
  if (auto* tabs = qobject_cast<QTabBar*>(&object)) return std::make_unique<TabsControl>(*tabs, *tabs, name);
  if (auto* holder = qobject_cast<QTabWidget*>(&object))
    return std::make_unique<TabsControl>(*holder, *holder->tabBar(), name);
  return std::make_unique<WidgetControl>(static_cast<QWidget&>(object), name);
}

QVariantMap Control::Members() {
  QStringList readable = QtProperties().keys();
  QStringList asked;
  QStringList actions;
  for (const QMetaObject* kind : {&ActionControl::staticMetaObject, &ComboControl::staticMetaObject,
                                  &TabsControl::staticMetaObject, &ItemsControl::staticMetaObject}) {
    for (int i = QObject::staticMetaObject.methodCount(); i < kind->methodCount(); ++i) {
      const QMetaMethod method = kind->method(i);
      const bool property = method.returnType() == QMetaType::QVariant && method.parameterCount() == 0;
      QStringList& names = method.returnType() == QMetaType::Void ? actions : property ? readable : asked;
      const QString name = QString::fromLatin1(method.name());
      if (!names.contains(name)) names += name;
    }
  }
  return {{"readable", readable}, {"asked", asked}, {"actions", actions}};
}

QVariant Control::Read(const QString& what, const Arguments& arguments) {
  const QMetaMethod method = MethodOf(*metaObject(), what);
  QVariant value = method.isValid() ? CallMethod(*this, method, arguments) : QtProperty(what);
  if (value.isValid()) return value;
  throw ScenarioError(QStringLiteral("%1 (%2) has no \"%3\".").arg(name_, kind().toString(), what));
}

void Control::Use(const QString& action, const Arguments& arguments) {
  const QMetaMethod method = MethodOf(*metaObject(), action);
  if (!method.isValid()) DoesNotTake(action);
  CallMethod(*this, method, arguments);
}

void Control::DoesNotTake(const QString& action) const {
  throw ScenarioError(QStringLiteral("%1 (%2) does not take \"%3\".").arg(name_, kind().toString(), action));
}

QVariant Control::QtProperty(const QString& what) const {
  const QByteArray property = QtProperties().value(what);
  const QObject* inner = what == "readOnly" || what == "placeholder" ? InnerEdit(object_) : nullptr;
  QVariant value = (inner != nullptr ? inner : &object_)->property(property.constData());
  if (value.typeId() == QMetaType::QKeySequence)
    return value.value<QKeySequence>().toString(QKeySequence::PortableText);
  return value.typeId() == QMetaType::QString ? PlainLines(value.toString()) : value;
}

QVariant Control::text() const {
  return TextOf(object_);
}

QVariant Control::caption() const {
  const bool window = object_.isWidgetType() && static_cast<const QWidget&>(object_).isWindow();
  return window ? object_.property("windowTitle") : text();
}

// The accelerator of a control, such as "Alt+N"; empty without one.
QVariant Control::mnemonic() const {
  const QVariant caption = object_.property(IsOneOf<QGroupBox>(&object_) ? "title" : "text");
  return QKeySequence::mnemonic(caption.toString()).toString(QKeySequence::PortableText);
}

void ActionControl::trigger() {
  if (const QWidget* modal = QApplication::activeModalWidget(); modal != nullptr)
    throw ScenarioError(QStringLiteral("%1 cannot be used while %2 is open.").arg(Name(), WindowName(*modal)));
  if (!action_.isVisible()) throw ScenarioError(QStringLiteral("%1 is not visible.").arg(Name()));
  if (!action_.isEnabled()) throw ScenarioError(QStringLiteral("%1 is disabled.").arg(Name()));
  action_.trigger();
  Settle();
}

QStringList WidgetControl::visibleTexts() const {
  QStringList texts;
  for (const QWidget* child : widget_.findChildren<QWidget*>()) {
    if (!child->isVisible() || child->window() != widget_.window()) continue;
    const QString text = TextOf(*child).toString();
    if (!text.isEmpty()) texts += text;
  }
  return texts;
}

}  // namespace qbx::scenario
