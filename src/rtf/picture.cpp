#include "rtf/picture.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QUrl>
#include <algorithm>
#include <cmath>

#include "rtf/formats.h"
#include "rtf/tokens.h"

namespace qbx {
namespace {

constexpr double kTwipsAHimetric = 1440.0 / 2540;
constexpr int kBoxPixels = 200;
constexpr qsizetype kMaxPictureWords = 500;
constexpr qsizetype kHexLine = 64;

bool IsPictureWord(QStringView name) {
  return name.startsWith(u"pic") || name.startsWith(u"wbm") || name == u"pngblip" || name == u"jpegblip" ||
         name == u"emfblip" || name == u"wmetafile" || name == u"dibitmap" || name == u"wbitmap" ||
         name == u"macpict" || name == u"pmmetafile";
}

/// The image shown instead of a picture of another kind, stretched to its size.
QImage Box() {
  QImage box(kBoxPixels, kBoxPixels, QImage::Format_RGB32);
  box.fill(QColor(0xE8, 0xE8, 0xE8));
  QPainter painter(&box);
  painter.setPen(QPen(Qt::gray, 6));  // wide enough to be seen when the box is made small
  painter.drawRect(box.rect());
  painter.drawLine(box.rect().topLeft(), box.rect().bottomRight());
  painter.drawLine(box.rect().bottomLeft(), box.rect().topRight());
  return box;
}

QByteArray HexLines(const QByteArray& bytes) {
  const QByteArray hex = bytes.toHex();
  QByteArray lines;
  lines.reserve(hex.size() + hex.size() / kHexLine + 1);
  for (qsizetype at = 0; at < hex.size(); at += kHexLine)
    lines += '\n' + hex.sliced(at, std::min(kHexLine, hex.size() - at));
  return lines;
}

/// \return the bytes, as PNG or JPEG, of a picture that was added to the document
QByteArray AddedPicture(const QVariant& resource) {
  if (resource.typeId() == QMetaType::QByteArray) {
    QByteArray bytes = resource.toByteArray();
    if (bytes.startsWith("\x89PNG") || bytes.startsWith("\xFF\xD8")) return bytes;
  }
  const QImage image =
      resource.typeId() == QMetaType::QByteArray ? QImage::fromData(resource.toByteArray()) : resource.value<QImage>();
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  if (!image.isNull()) image.save(&buffer, "PNG");
  return png;
}

}  // namespace

void RtfPicture::Word(QStringView name, int number, bool hasNumber) {
  if (!IsPictureWord(name) || words_.size() > kMaxPictureWords) return;
  words_ += QChar(u'\\') + name.toString();
  if (hasNumber) words_ += QString::number(number);
  shown_ |= name == u"pngblip" || name == u"jpegblip";
  metafile_ |= name == u"wmetafile" || name == u"emfblip";
  const int length = std::clamp(number, 0, kMaxTwips);
  if (name == u"picw") width_ = length;
  if (name == u"pich") height_ = length;
  if (name == u"picwgoal") goalWidth_ = length;
  if (name == u"pichgoal") goalHeight_ = length;
  if (name == u"picscalex") scaleX_ = std::clamp(number, 1, 1000);
  if (name == u"picscaley") scaleY_ = std::clamp(number, 1, 1000);
}

void RtfPicture::Hex(QStringView digits) {
  for (const QChar unit : digits) {
    const int digit = HexDigit(unit);
    if (digit < 0) continue;
    if (halfByte_ >= 0) bytes_.append(static_cast<char>(halfByte_ * 16 + digit));
    halfByte_ = halfByte_ >= 0 ? -1 : digit;
  }
}

void RtfPicture::Binary(QStringView bytes) {
  bytes_ += bytes.toLatin1();
}

void RtfPicture::FillShape(int width, int height) {
  if (width <= 0 || height <= 0 || goalWidth_ > 0) return;
  Word(u"picwgoal", width, true);
  Word(u"pichgoal", height, true);
}

QSizeF RtfPicture::Size() const {
  const auto pixels = [this](int goal, int own, int scale) {
    double twips = goal;
    if (goal == 0) twips = metafile_ ? own * kTwipsAHimetric : own * kTwipsAPixel;
    return std::min(twips, double{kMaxTwips}) / kTwipsAPixel * scale / 100;
  };
  return {pixels(goalWidth_, width_, scaleX_), pixels(goalHeight_, height_, scaleY_)};
}

QTextImageFormat RtfPicture::AddTo(QTextDocument& document, int number) const {
  QTextImageFormat format;
  format.setName(QStringLiteral("rtf-picture:") + (shown_ ? QString::number(number) : QStringLiteral("box")));
  format.setProperty(kPictureWords, words_);
  format.setProperty(kPictureBytes, bytes_);
  const QSizeF size = Size();
  if (!size.isEmpty()) {
    format.setWidth(size.width());
    format.setHeight(size.height());
  }
  const QUrl name(format.name());
  if (shown_) {
    document.addResource(QTextDocument::ImageResource, name, bytes_);
  } else if (!document.resource(QTextDocument::ImageResource, name).isValid()) {
    document.addResource(QTextDocument::ImageResource, name, Box());
  }
  return format;
}

QByteArray PictureGroup(const QTextImageFormat& format, const QTextDocument& document) {
  if (format.hasProperty(kPictureBytes)) {
    return "{\\pict" + format.stringProperty(kPictureWords).toLatin1() +
           HexLines(format.property(kPictureBytes).toByteArray()) + '}';
  }
  const QByteArray bytes = AddedPicture(document.resource(QTextDocument::ImageResource, QUrl(format.name())));
  if (bytes.isEmpty()) return {};
  const QSizeF own = QImage::fromData(bytes).size();
  const QSizeF size(format.width() > 0 ? format.width() : own.width(),
                    format.height() > 0 ? format.height() : own.height());
  return (bytes.startsWith("\x89PNG") ? "{\\pict\\pngblip\\picwgoal" : "{\\pict\\jpegblip\\picwgoal") +
         QByteArray::number(std::lround(size.width() * kTwipsAPixel)) + "\\pichgoal" +
         QByteArray::number(std::lround(size.height() * kTwipsAPixel)) + HexLines(bytes) + '}';
}

}  // namespace qbx
