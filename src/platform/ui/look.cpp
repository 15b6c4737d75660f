#include "platform/ui/look.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QColor>
#include <QComboBox>
#include <QEvent>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QObject>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QString>
#include <QStyleOption>
#include <QStyleOptionComplex>
#include <QTreeView>
#include <QWidget>

#include "platform/ui/contrast.h"

namespace qbx {
namespace {

constexpr char kStyleSheet[] = R"(
QGroupBox { border: 1px solid FRAME; border-radius: 4px; margin-top: 9px; padding: 8px 8px 6px 8px; }
QGroupBox::title { subcontrol-origin: margin; left: 9px; padding: 0 4px; }
QPushButton { padding: 5px 14px; }
QFrame#fraReporting QPushButton, QFrame#fraMarketing QPushButton { font-weight: bold; }
QFrame#fraReporting, QFrame#fraMarketing { border: 1px solid FRAME; border-radius: 6px; background: palette(base); }
QLabel#lblWelcome { font-size: 17pt; }
QLabel#lblPickStart { font-size: 13pt; padding: 28px; }
QPlainTextEdit#txtQueryDesc { background: transparent; border: none; }
QScrollArea, QScrollArea > QWidget > QWidget#optionsContents { background: transparent; }
QTreeView::item { padding: 3px 0px; }
QStatusBar::item { border: none; }
)";

/// The palette's frame colour with enough contrast; a dark palette has frames darker than what they surround.
QColor FrameColour(const QPalette& palette) {
  constexpr double kFrameContrast = 2.0;
  return Readable(palette.color(QPalette::Mid), palette.color(QPalette::WindowText),
                  {Raised(palette.color(QPalette::Window))}, kFrameContrast);
}

/// Fusion draws frames in a darker window colour and the focus in a darker highlight. On a dark palette neither can be
/// seen.
class OutlinedFusion : public QProxyStyle {
 public:
  OutlinedFusion() : QProxyStyle(QStringLiteral("Fusion")) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_Frame || element == PE_IndicatorCheckBox)
      Outline(*option, *painter, false);
    else if (element == PE_FrameLineEdit)
      Outline(*option, *painter, (option->state & State_HasFocus) != 0);
  }

  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox) Outline(*option, *painter, (option->state & State_HasFocus) != 0);
  }

 private:
  static void Outline(const QStyleOption& option, QPainter& painter, bool focused) {
    if (!IsDark(option.palette)) return;
    painter.save();
    painter.setPen(focused ? AccentColour(option.palette) : FrameColour(option.palette));
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
  }
};

/// Keeps the wheel from changing a value unnoticed while the user scrolls past it.
class WheelGuard : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel) return false;
    const bool holdsValue =
        qobject_cast<QComboBox*>(watched) != nullptr || qobject_cast<QAbstractSpinBox*>(watched) != nullptr;
    if (!holdsValue || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();  // so that the event goes on to a widget that can scroll
    return true;
  }
};

}  // namespace

QPalette ReadableParts(const QPalette& palette) {
  QPalette parts;
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    const auto colour = [&](QPalette::ColorRole role) { return palette.color(group, role); };
    const QColor onHighlight = colour(QPalette::HighlightedText);
    const QColor away = onHighlight.lightness() > 127 ? Qt::black : Qt::white;
    parts.setColor(group, QPalette::Highlight,
                   Readable(colour(QPalette::Highlight), away, {onHighlight}, kTextContrast));
    const QColor faint = Mixed(colour(QPalette::Base), colour(QPalette::Text), 0.5);
    parts.setColor(
        group, QPalette::PlaceholderText,
        Readable(faint, colour(QPalette::Text),
                 {colour(QPalette::Base), colour(QPalette::Button), Raised(colour(QPalette::Button))}, kTextContrast));
  }
  return parts;
}

void ApplyLook() {
  QApplication::setStyle(new OutlinedFusion);
  QApplication::setPalette(ReadableParts(QApplication::palette()).resolve(QApplication::palette()));
  qApp->installEventFilter(new WheelGuard(qApp));
  qApp->setStyleSheet(
      QString::fromLatin1(kStyleSheet).replace(QLatin1String("FRAME"), FrameColour(QApplication::palette()).name()));
}

}  // namespace qbx
