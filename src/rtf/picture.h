// A picture between RTF and a document. Used inside this folder only.

#pragma once

#include <QByteArray>
#include <QSizeF>
#include <QString>
#include <QTextDocument>
#include <QTextFormat>

namespace qbx {

/// Collects a \pict group and puts it into a document. Its control words and its bytes are kept as they came, so that the
/// writer can give them back whatever kind of picture it is.
class RtfPicture {
 public:
  void Word(QStringView name, int number, bool hasNumber);
  void Hex(QStringView digits);
  void Binary(QStringView bytes);
  /// The size of the shape that the picture fills, in twips.
  void FillShape(int width, int height);

  [[nodiscard]] bool IsEmpty() const { return bytes_.isEmpty(); }

  /// Adds the picture to the document's resources: PNG and JPEG as they are, any other kind as a box of its size.
  /// \return the format of the character that stands for it
  [[nodiscard]] QTextImageFormat AddTo(QTextDocument& document, int number) const;

 private:
  [[nodiscard]] QSizeF Size() const;

  QString words_;
  QByteArray bytes_;
  int halfByte_ = -1;
  bool shown_ = false;     ///< of a kind that can be shown
  bool metafile_ = false;  ///< whose size is in hundredths of a millimetre
  int width_ = 0, height_ = 0;
  int goalWidth_ = 0, goalHeight_ = 0;
  int scaleX_ = 100, scaleY_ = 100;
};

/// A picture of a document as an RTF group: as it came, or as PNG or JPEG when it was added since.
/// \return empty when the document does not have it
[[nodiscard]] QByteArray PictureGroup(const QTextImageFormat& format, const QTextDocument& document);

}  // namespace qbx
