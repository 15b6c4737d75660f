// How text travels in e-mails: folded headers, encoded words, quoted-printable and base64 bodies.

#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace qbx {

/// Appends one header field to `out`, folded before a line exceeds 78 characters.
///
///   HeaderWriter subject(&bytes, "Subject");
///   subject.Text(QStringLiteral("Your service is due"));
///   subject.End();
class HeaderWriter {
 public:
  HeaderWriter(QByteArray* out, QByteArrayView name);

  /// Adds words unchanged, separated by single blanks. Lines are broken only between words.
  void Words(QByteArrayView words);
  /// Adds free text: unchanged when it is plain ASCII, otherwise as encoded words (RFC 2047).
  void Text(const QString& text);
  /// Adds a display name: unchanged, in quotes, or as encoded words, whichever it needs.
  void DisplayName(const QString& name);
  /// Adds characters right after the last word, such as the comma between two addresses.
  void Append(QByteArrayView characters);
  void End();

 private:
  void Word(QByteArrayView word);
  void Encoded(const QByteArray& utf8);

  QByteArray* out_;
  qsizetype column_;
};

/// Whether a value cannot stand in a header: it holds CR, LF or NUL, and could end its header and begin another.
[[nodiscard]] bool BreaksHeader(const QString& value);

/// Appends a body as UTF-8 in quoted-printable. Every line ends in CR LF and has at most 76 characters.
void AppendQuotedPrintable(const QString& body, QByteArray* out);

/// Appends bytes as base64 in lines of 76 characters, each ending in CR LF.
void AppendBase64(const QByteArray& bytes, QByteArray* out);

}  // namespace qbx
