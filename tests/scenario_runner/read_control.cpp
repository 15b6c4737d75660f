#include "read_control.h"

#include <QtWidgets>

#include "find_control.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

QString ColourName(const QColor& colour) {
  return colour.name(QColor::HexRgb);
}

// The line edit inside a control that is made of several, such as a date box.
const QLineEdit* InnerEdit(const QWidget& widget) {
  if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) return edit;
  return widget.findChild<QLineEdit*>();
}

QVariant TextOf(const QObject& control) {
  if (const auto* action = qobject_cast<const QAction*>(&control)) return PlainCaption(action->text());
  if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return PlainCaption(button->text());
  if (const auto* label = qobject_cast<const QLabel*>(&control)) {
    if (label->textFormat() == Qt::RichText ||
        (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text())))
      return PlainLines(QTextDocumentFragment::fromHtml(label->text()).toPlainText());
    return PlainLines(label->buddy() != nullptr ? PlainCaption(label->text()) : label->text());
  }
  if (const auto* box = qobject_cast<const QGroupBox*>(&control)) return PlainCaption(box->title());
  if (const auto* combo = qobject_cast<const QComboBox*>(&control)) return combo->currentText();
  if (const auto* edit = qobject_cast<const QTextEdit*>(&control)) return PlainLines(edit->toPlainText());
  if (const auto* edit = qobject_cast<const QPlainTextEdit*>(&control)) return PlainLines(edit->toPlainText());
  if (const auto* bar = qobject_cast<const QProgressBar*>(&control)) return bar->text();
  if (const auto* bar = qobject_cast<const QStatusBar*>(&control)) return bar->currentMessage();
  const auto& widget = static_cast<const QWidget&>(control);
  if (const QLineEdit* edit = InnerEdit(widget)) return edit->text();
  if (widget.isWindow()) return widget.windowTitle();
  return {};
}

QVariant CaptionOf(const QObject& control) {
  if (control.isWidgetType() && static_cast<const QWidget&>(control).isWindow())
    return static_cast<const QWidget&>(control).windowTitle();
  return TextOf(control);
}

// What Alt is pressed with, such as "Alt+N"; empty without an accelerator.
QString MnemonicOf(const QObject& control) {
  const QVariant text = control.property(qobject_cast<const QGroupBox*>(&control) != nullptr ? "title" : "text");
  return QKeySequence::mnemonic(text.toString()).toString(QKeySequence::PortableText);
}

QVariant ReadAction(const QAction& action, const QString& property) {
  if (property == QLatin1String("enabled")) return action.isEnabled();
  if (property == QLatin1String("visible")) return action.isVisible();
  if (property == QLatin1String("ticked")) return action.isChecked();
  if (property == QLatin1String("shortcut")) return action.shortcut().toString(QKeySequence::PortableText);
  if (property == QLatin1String("toolTip")) return action.toolTip();
  return {};
}

QVariant ReadState(const QWidget& widget, const QString& property) {
  if (property == QLatin1String("enabled")) return widget.isEnabled();
  if (property == QLatin1String("visible")) return widget.isVisible();
  if (property == QLatin1String("toolTip")) return PlainLines(widget.toolTip());
  if (property == QLatin1String("accessibleName")) return widget.accessibleName();
  if (property == QLatin1String("colour")) return ColourName(widget.palette().color(widget.foregroundRole()));
  if (property == QLatin1String("background")) return ColourName(widget.palette().color(widget.backgroundRole()));
  if (property == QLatin1String("bold")) return widget.font().bold();
  if (property == QLatin1String("focused")) {
    const QWidget* focus = QApplication::focusWidget();
    return focus != nullptr && (focus == &widget || widget.isAncestorOf(focus));
  }
  if (property == QLatin1String("size"))
    return QVariantMap{{QStringLiteral("width"), widget.width()}, {QStringLiteral("height"), widget.height()}};
  return {};
}

QVariant ReadButton(const QAbstractButton& button, const QString& property) {
  if (property == QLatin1String("ticked")) return button.isChecked();
  if (property == QLatin1String("shortcut")) return button.shortcut().toString(QKeySequence::PortableText);
  return {};
}

QVariant ReadEdit(const QWidget& widget, const QString& property) {
  const auto* text = qobject_cast<const QTextEdit*>(&widget);
  const auto* plain = qobject_cast<const QPlainTextEdit*>(&widget);
  const auto* combo = qobject_cast<const QComboBox*>(&widget);
  const QLineEdit* line = InnerEdit(widget);
  if (property == QLatin1String("readOnly")) {
    if (text != nullptr) return text->isReadOnly();
    if (plain != nullptr) return plain->isReadOnly();
    if (line != nullptr) return line->isReadOnly();
  }
  if (property == QLatin1String("placeholder")) {
    if (text != nullptr) return text->placeholderText();
    if (plain != nullptr) return plain->placeholderText();
    if (line != nullptr) return line->placeholderText();
    if (combo != nullptr) return combo->placeholderText();
  }
  return {};
}

QVariant ReadCombo(const QComboBox& combo, const QString& property) {
  if (property == QLatin1String("selectedIndex")) return combo.currentIndex();
  if (property == QLatin1String("selectedText")) return combo.currentText();
  if (property != QLatin1String("items")) return {};
  QStringList items;
  for (int i = 0; i < combo.count(); ++i)
    items += combo.itemText(i);
  return items;
}

QVariant ReadTabs(const QTabBar& tabs, int current, const QString& property, const Arguments& arguments) {
  if (property == QLatin1String("currentTab")) return current + 1;
  if (property == QLatin1String("tabEnabled")) return tabs.isEnabled() && tabs.isTabEnabled(NumberAt(arguments, 0) - 1);
  if (property != QLatin1String("tabs")) return {};
  QStringList captions;
  for (int i = 0; i < tabs.count(); ++i) {
    if (tabs.isTabVisible(i)) captions += PlainCaption(tabs.tabText(i));
  }
  return captions;
}

// Everything that can be read in a window or frame, for a look at the whole of it.
QVariant VisibleTexts(const QWidget& widget) {
  QStringList texts;
  for (const QWidget* child : widget.findChildren<QWidget*>()) {
    if (!child->isVisible() || child->window() != widget.window()) continue;
    const QString text = TextOf(*child).toString();
    if (!text.isEmpty()) texts += text;
  }
  return texts;
}

QVariant ReadWidget(QWidget& widget, const QString& property, const Arguments& arguments) {
  if (property == QLatin1String("visibleTexts")) return VisibleTexts(widget);
  QVariant value = ReadState(widget, property);
  if (!value.isValid()) value = ReadEdit(widget, property);
  if (value.isValid()) return value;
  if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) return ReadItems(*view, property, arguments);
  if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) return ReadButton(*button, property);
  if (const auto* combo = qobject_cast<QComboBox*>(&widget)) return ReadCombo(*combo, property);
  if (const auto* tabs = qobject_cast<QTabWidget*>(&widget))
    return ReadTabs(*tabs->tabBar(), tabs->currentIndex(), property, arguments);
  if (const auto* tabs = qobject_cast<QTabBar*>(&widget))
    return ReadTabs(*tabs, tabs->currentIndex(), property, arguments);
  if (const auto* box = qobject_cast<QGroupBox*>(&widget); box != nullptr && property == QLatin1String("ticked"))
    return box->isChecked();
  if (const auto* bar = qobject_cast<QProgressBar*>(&widget)) {
    if (property == QLatin1String("value")) return bar->value();
    if (property == QLatin1String("maximum")) return bar->maximum();
  }
  if (const auto* spin = qobject_cast<QSpinBox*>(&widget)) {
    if (property == QLatin1String("value")) return spin->value();
    if (property == QLatin1String("maximum")) return spin->maximum();
  }
  return {};
}

}  // namespace

QVariant ReadControl(QObject& control, const QString& name, const QString& property, const Arguments& arguments) {
  QVariant value;
  if (property == QLatin1String("kind")) return QString::fromLatin1(control.metaObject()->className());
  if (property == QLatin1String("mnemonic")) return MnemonicOf(control);
  if (property == QLatin1String("text")) value = TextOf(control);
  if (property == QLatin1String("caption")) value = CaptionOf(control);
  if (!value.isValid() && control.isWidgetType())
    value = ReadWidget(static_cast<QWidget&>(control), property, arguments);
  if (const auto* action = qobject_cast<QAction*>(&control); action != nullptr && !value.isValid())
    value = ReadAction(*action, property);
  if (value.isValid()) return value;
  throw ScenarioError(QStringLiteral("%1 (%2) has no \"%3\".")
                          .arg(name, QString::fromLatin1(control.metaObject()->className()), property));
}

}  // namespace qbx::scenario
