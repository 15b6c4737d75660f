#include "platform/ui/look.h"

#include <QtWidgets>

#include "platform/ui/contrast.h"
#include "platform/ui/edit_drawings.h"

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

// Every drawing lies in a square of 24 by 24.
using Stroke = void (*)(QPainterPath& path);

void Person(QPainterPath& path, double x, double y, double scale) {
  path.addEllipse(QPointF(x, y), 3.2 * scale, 3.2 * scale);
  path.moveTo(x - 5.5 * scale, y + 11 * scale);
  path.cubicTo(x - 5.5 * scale, y + 3.5 * scale, x + 5.5 * scale, y + 3.5 * scale, x + 5.5 * scale, y + 11 * scale);
  path.closeSubpath();
}

void Customers(QPainterPath& path) {
  Person(path, 12, 7, 1.2);
}

void Vehicles(QPainterPath& path) {
  path.moveTo(2.5, 16.5);
  path.lineTo(2.5, 12);
  path.lineTo(5, 11);
  path.lineTo(8, 6.5);
  path.lineTo(16, 6.5);
  path.lineTo(19.5, 11);
  path.lineTo(21.5, 12);
  path.lineTo(21.5, 16.5);
  path.closeSubpath();
  path.moveTo(5, 11);
  path.lineTo(19.5, 11);
  path.addEllipse(QPointF(7, 17), 2.2, 2.2);
  path.addEllipse(QPointF(17, 17), 2.2, 2.2);
}

void Boats(QPainterPath& path) {
  path.moveTo(2.5, 15.5);
  path.lineTo(21.5, 15.5);
  path.lineTo(18.5, 20);
  path.lineTo(5.5, 20);
  path.closeSubpath();
  path.moveTo(11.5, 15.5);
  path.lineTo(11.5, 3.5);
  path.lineTo(18.5, 12.5);
  path.lineTo(11.5, 12.5);
  path.moveTo(9.5, 6.5);
  path.lineTo(4.5, 12.5);
  path.lineTo(9.5, 12.5);
  path.closeSubpath();
}

void Logo(QPainterPath& path) {
  path.addRoundedRect(2, 5, 20, 14, 2, 2);
  path.moveTo(2.5, 6.5);
  path.lineTo(12, 13);
  path.lineTo(21.5, 6.5);
  path.moveTo(2.8, 18);
  path.lineTo(9, 11.2);
  path.moveTo(21.2, 18);
  path.lineTo(15, 11.2);
}

void Information(QPainterPath& path) {
  path.addEllipse(QPointF(12, 12), 9, 9);
  path.moveTo(12, 11);
  path.lineTo(12, 16.5);
  path.addEllipse(QPointF(12, 7.6), 0.6, 0.6);
}

void Calendar(QPainterPath& path) {
  path.addRoundedRect(3.5, 5, 17, 15.5, 1.5, 1.5);
  path.moveTo(3.5, 9.5);
  path.lineTo(20.5, 9.5);
  for (const double x : {8.0, 16.0}) {
    path.moveTo(x, 3);
    path.lineTo(x, 6.5);
  }
}

void New(QPainterPath& path) {
  path.moveTo(6, 3);
  path.lineTo(14, 3);
  path.lineTo(18.5, 7.5);
  path.lineTo(18.5, 21);
  path.lineTo(6, 21);
  path.closeSubpath();
  path.moveTo(12.2, 10);
  path.lineTo(12.2, 17);
  path.moveTo(8.7, 13.5);
  path.lineTo(15.7, 13.5);
}

void Open(QPainterPath& path) {
  path.moveTo(3, 19.5);
  path.lineTo(3, 5);
  path.lineTo(9, 5);
  path.lineTo(11, 7.5);
  path.lineTo(19, 7.5);
  path.lineTo(19, 11);
  path.moveTo(3, 19.5);
  path.lineTo(6.5, 11);
  path.lineTo(22, 11);
  path.lineTo(18.5, 19.5);
  path.closeSubpath();
}

void Save(QPainterPath& path) {
  path.addRoundedRect(4, 4, 16, 16, 1.5, 1.5);
  path.addRect(8, 13, 8, 7);
  path.addRect(8, 4, 7, 5);
}

void Run(QPainterPath& path) {
  path.moveTo(3, 4.5);
  path.lineTo(21, 12);
  path.lineTo(3, 19.5);
  path.lineTo(6, 12);
  path.closeSubpath();
  path.moveTo(6, 12);
  path.lineTo(14, 12);
}

void Refresh(QPainterPath& path) {
  path.arcMoveTo(4.5, 4.5, 15, 15, 60);
  path.arcTo(4.5, 4.5, 15, 15, 60, 290);
  path.moveTo(19.5, 3.5);
  path.lineTo(16, 6.2);
  path.lineTo(19.3, 9);
}

Stroke StrokeOf(Drawing drawing) {
  switch (drawing) {
    case Drawing::kLogo:
      return Logo;
    case Drawing::kInformation:
      return Information;
    case Drawing::kCustomers:
      return Customers;
    case Drawing::kVehicles:
      return Vehicles;
    case Drawing::kBoats:
      return Boats;
    case Drawing::kCalendar:
      return Calendar;
    case Drawing::kNew:
      return New;
    case Drawing::kOpen:
      return Open;
    case Drawing::kSave:
      return Save;
    case Drawing::kRun:
      return Run;
    case Drawing::kRefresh:
      return Refresh;
    default:
      return nullptr;  // of an editor
  }
}

/// As light as a page of tabs or a button gets that is drawn on a colour.
QColor Raised(const QColor& colour) {
  return colour.lighter(140);
}

/// The highlight, brought out where it is a line and not a background.
QColor AccentColour(const QPalette& palette) {
  const QColor window = palette.color(QPalette::Window);
  return Readable(palette.color(QPalette::Highlight), palette.color(QPalette::WindowText), {window, Raised(window)},
                  kMarkContrast);
}

QColor LineColour(Drawing drawing, QIcon::Mode mode) {
  const QPalette palette = QApplication::palette();
  if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::ButtonText);
  if (mode == QIcon::Selected) return palette.color(QPalette::HighlightedText);
  const bool coloured = drawing == Drawing::kLogo || drawing == Drawing::kInformation;
  return coloured ? AccentColour(palette) : palette.color(QPalette::ButtonText);
}

class DrawnIconEngine : public QIconEngine {
 public:
  explicit DrawnIconEngine(Drawing drawing) : drawing_(drawing) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const double side = std::min(rect.width(), rect.height());
    QPainterPath path;
    if (const Stroke stroke = StrokeOf(drawing_)) {
      stroke(path);
    } else {
      DrawEditing(drawing_, path);
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
    painter->scale(side / 24, side / 24);
    painter->setPen(QPen(LineColour(drawing_, mode), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(path);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new DrawnIconEngine(drawing_); }

 private:
  Drawing drawing_;
};

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

QIcon DrawnIcon(Drawing drawing) {
  return QIcon(new DrawnIconEngine(drawing));
}

}  // namespace qbx
