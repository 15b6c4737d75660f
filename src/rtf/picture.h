// A picture between RTF and a document. For use in this folder only.

#pragma once

#include <QByteArray>
#include <QSizeF>
#include <QString>
#include <QTextDocument>
#include <QTextFormat>

namespace qbx {

/// Collects a \pict group and puts it into a document. Its control words and its bytes are kept unchanged, so that the
/// writer can give back any kind of picture.
class RtfPicture {
 public:
  void Word(QStringView name, int number, bool hasNumber);
  void Hex(QStringView digits);
  void Binary(QStringView bytes);
  /// Sets the size of the shape that the picture fills, in twips.
  void FillShape(int width, int height);

  [[nodiscard]] bool IsEmpty() const { return bytes_.isEmpty(); }

  /// Adds the picture to the document's resources. PNG and JPEG are shown; any other kind is shown as a box of its
  /// size.
  /// \return the format of the character that stands for the picture
  [[nodiscard]] QTextImageFormat AddTo(QTextDocument& document, int number) const;

 private:
  [[nodiscard]] QSizeF Size() const;

  QString words_;
  QByteArray bytes_;
  int halfByte_ = -1;
  bool shown_ = false;     ///< whether its kind can be shown
  bool metafile_ = false;  ///< a metafile's size is in hundredths of a millimetre
  int width_ = 0, height_ = 0;
  int goalWidth_ = 0, goalHeight_ = 0;
  int scaleX_ = 100, scaleY_ = 100;
};

/// A picture of a document as an RTF group: unchanged when it was read, as PNG or JPEG when it was added since.
/// \return empty when the document lacks the picture
[[nodiscard]] QByteArray PictureGroup(const QTextImageFormat& format, const QTextDocument& document);

}  // namespace qbx
