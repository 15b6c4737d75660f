#include "platform/ui/drawn_icon.h"

#include <QApplication>
#include <QByteArray>
#include <QColor>
#include <QFile>
#include <QIODevice>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QSvgRenderer>
#include <algorithm>
#include <iterator>

#include "platform/ui/contrast.h"

namespace qbx {
namespace {

/// In the order of `Drawing`.
constexpr const char* kFiles[] = {"align-centre", "align-left", "align-right", "boats",     "bold", "bullets",
                                  "calendar",     "colour",     "copy",        "customers", "cut",  "find",
                                  "information",  "italic",     "logo",        "new",       "open", "page-break",
                                  "paste",        "redo",       "refresh",     "run",       "save", "underline",
                                  "undo",         "vehicles"};
static_assert(std::size(kFiles) == static_cast<std::size_t>(Drawing::kVehicles) + 1);

QColor LineColour(Drawing drawing, QIcon::Mode mode) {
  const QPalette palette = QApplication::palette();
  if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::ButtonText);
  if (mode == QIcon::Selected) return palette.color(QPalette::HighlightedText);
  const bool coloured = drawing == Drawing::kLogo || drawing == Drawing::kInformation;
  return coloured ? AccentColour(palette) : palette.color(QPalette::ButtonText);
}

class DrawnIconEngine : public QIconEngine {
 public:
  explicit DrawnIconEngine(Drawing drawing) : drawing_(drawing) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(kFiles[static_cast<int>(drawing)])));
    if (file.open(QIODevice::ReadOnly)) svg_ = file.readAll();
  }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const int side = std::min(rect.width(), rect.height());
    const QPoint corner(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
    QByteArray coloured = svg_;
    coloured.replace("currentColor", LineColour(drawing_, mode).name().toLatin1());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(coloured).render(painter, QRect(corner, QSize(side, side)));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new DrawnIconEngine(*this); }

 private:
  Drawing drawing_;
  QByteArray svg_;
};

}  // namespace

QIcon DrawnIcon(Drawing drawing) {
  return QIcon(new DrawnIconEngine(drawing));
}

}  // namespace qbx
