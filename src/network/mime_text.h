// How text travels in e-mails: folded headers, encoded words, quoted-printable and base64 bodies.

#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace qbx {

/// Writes one header field behind `out`, folded before it grows over 78 characters.
///
///   HeaderWriter subject(&bytes, "Subject");
///   subject.Text(QStringLiteral("Your service is due"));
///   subject.End();
class HeaderWriter {
 public:
  HeaderWriter(QByteArray* out, QByteArrayView name);

  /// Adds words as they are, parted by single blanks; the line breaks between them only.
  void Words(QByteArrayView words);
  /// Adds free text: as it is when it is plain ASCII, else as encoded words (RFC 2047).
  void Text(const QString& text);
  /// Adds a display name: as it is, in quotes, or as encoded words, whichever it needs.
  void DisplayName(const QString& name);
  /// Puts characters right behind the last word, such as the comma between two addresses.
  void Append(QByteArrayView characters);
  void End();

 private:
  void Word(QByteArrayView word);
  void Encoded(const QByteArray& utf8);

  QByteArray* out_;
  qsizetype column_;
};

/// Whether a header value could end its header and begin another one, or is no text at all: it holds CR, LF or NUL.
[[nodiscard]] bool BreaksHeader(const QString& value);

/// Appends a body as UTF-8 in quoted-printable: CR LF at the end of each line, also the last, no line longer than 76.
void AppendQuotedPrintable(const QString& body, QByteArray* out);

/// Appends bytes as base64, CR LF at the end of each line of 76.
void AppendBase64(const QByteArray& bytes, QByteArray* out);

}  // namespace qbx
