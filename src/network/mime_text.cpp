#include "network/mime_text.h"

#include <algorithm>

namespace qbx {
namespace {

constexpr qsizetype kFoldAt = 78;
constexpr qsizetype kEncodedLine = 76;  // the longest line with an encoded word (RFC 2047, 2)
constexpr qsizetype kEncodedWord = 75;
constexpr qsizetype kEncodedFrame = 12;  // "=?UTF-8?Q?" and "?="
constexpr char kHexDigits[] = "0123456789ABCDEF";

bool IsPrintable(char character) {
  return character >= 0x20 && character < 0x7F;
}

/// Whether a character stands for itself in an encoded word, also in a display name.
bool IsSafeInWord(char character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
         (character >= 'a' && character <= 'z') || QByteArrayView("!*+-/").contains(character);
}

char* PutHex(char* at, char byte) {
  *at++ = '=';
  *at++ = kHexDigits[static_cast<unsigned char>(byte) >> 4];
  *at++ = kHexDigits[static_cast<unsigned char>(byte) & 0x0F];
  return at;
}

/// Whether folding and unfolding would change the text, or a word of it is too long for a line.
bool NeedsEncoding(QByteArrayView text) {
  constexpr qsizetype kLongestWord = 70;
  if (text.contains(QByteArrayView("=?")) || text.contains(QByteArrayView("  "))) return true;
  if (text.startsWith(' ') || text.endsWith(' ') || !std::all_of(text.begin(), text.end(), IsPrintable)) return true;
  qsizetype start = 0;
  for (qsizetype blank = text.indexOf(' '); blank >= 0; blank = text.indexOf(' ', start)) {
    if (blank - start > kLongestWord) return true;
    start = blank + 1;
  }
  return text.size() - start > kLongestWord;
}

qsizetype CharacterLength(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  return byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

qsizetype QLength(QByteArrayView utf8) {
  const auto plain = std::count_if(utf8.begin(), utf8.end(), [](char c) { return c == ' ' || IsSafeInWord(c); });
  return plain + (utf8.size() - plain) * 3;
}

qsizetype BLength(QByteArrayView utf8) {
  return (utf8.size() + 2) / 3 * 4;
}

QByteArray QEncoded(QByteArrayView utf8) {
  QByteArray out(utf8.size() * 3, Qt::Uninitialized);
  char* at = out.data();
  for (const char byte : utf8) {
    if (byte == ' ' || IsSafeInWord(byte)) {
      *at++ = byte == ' ' ? '_' : byte;
    } else {
      at = PutHex(at, byte);
    }
  }
  out.truncate(at - out.data());
  return out;
}

}  // namespace

HeaderWriter::HeaderWriter(QByteArray* out, QByteArrayView name) : out_(out), column_(name.size() + 1) {
  out_->append(name).append(':');
}

void HeaderWriter::Append(QByteArrayView characters) {
  out_->append(characters);
  column_ += characters.size();
}

void HeaderWriter::Word(QByteArrayView word) {
  if (column_ + 1 + word.size() > kFoldAt) {
    out_->append("\r\n");
    column_ = 0;
  }
  out_->append(' ').append(word);
  column_ += 1 + word.size();
}

void HeaderWriter::Words(QByteArrayView words) {
  qsizetype start = 0;
  for (qsizetype blank = words.indexOf(' '); blank >= 0; blank = words.indexOf(' ', start)) {
    Word(words.sliced(start, blank - start));
    start = blank + 1;
  }
  Word(words.sliced(start));
}

void HeaderWriter::Text(const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  if (NeedsEncoding(utf8)) {
    Encoded(utf8);
  } else if (!utf8.isEmpty()) {
    Words(utf8);
  }
}

void HeaderWriter::DisplayName(const QString& name) {
  const QByteArray utf8 = name.toUtf8();
  if (NeedsEncoding(utf8)) {
    Encoded(utf8);
    return;
  }
  const bool hasSpecials =
      std::any_of(utf8.begin(), utf8.end(), [](char c) { return QByteArrayView("()<>[]:;@\\,.\"").contains(c); });
  if (!hasSpecials) {
    Words(utf8);
    return;
  }
  QByteArray escaped = utf8;
  escaped.replace("\\", "\\\\").replace("\"", "\\\"");
  Words('"' + escaped + '"');
}

/// Cuts the text between characters. Each encoded word takes as much as its line has room for.
void HeaderWriter::Encoded(const QByteArray& utf8) {
  const bool useQ = QLength(utf8) <= BLength(utf8);
  constexpr qsizetype kLeastRoom = 16;  // enough for one character of four bytes
  QByteArrayView rest(utf8);
  while (!rest.isEmpty()) {
    qsizetype room = kEncodedLine - column_ - 1 - kEncodedFrame;
    if (room < kLeastRoom) {
      Append("\r\n");
      column_ = 0;
      room = kEncodedLine - 1 - kEncodedFrame;
    }
    room = std::min(room, kEncodedWord - kEncodedFrame);
    qsizetype length = 0;
    for (qsizetype next = CharacterLength(rest[0]); next <= rest.size();) {
      const QByteArrayView part = rest.first(next);
      if ((useQ ? QLength(part) : BLength(part)) > room) break;
      length = next;
      if (next == rest.size()) break;
      next += CharacterLength(rest[next]);
    }
    const QByteArrayView part = rest.first(length);
    rest = rest.sliced(length);
    Append(useQ ? " =?UTF-8?Q?" : " =?UTF-8?B?");
    Append(useQ ? QEncoded(part) : part.toByteArray().toBase64());
    Append("?=");
  }
}

void HeaderWriter::End() {
  out_->append("\r\n");
}

bool BreaksHeader(const QString& value) {
  return std::any_of(value.begin(), value.end(), [](QChar c) { return c == u'\r' || c == u'\n' || c.isNull(); });
}

void AppendQuotedPrintable(const QString& body, QByteArray* out) {
  constexpr qsizetype kLongestLine = 75;  // and "=" where the line is continued
  const QByteArray utf8 = body.toUtf8();
  const qsizetype start = out->size();
  // At most three characters a byte, and a break of three for every 73 of them.
  out->resize(start + utf8.size() * 3 + utf8.size() / 8 + 8);
  char* at = out->data() + start;
  char* line = at;
  const char* const end = utf8.constData() + utf8.size();
  for (const char* from = utf8.constData(); from != end; ++from) {
    const char byte = *from;
    if (byte == '\r' || byte == '\n') {
      if (byte == '\r' && from + 1 != end && from[1] == '\n') ++from;
      *at++ = '\r';
      *at++ = '\n';
      line = at;
      continue;
    }
    // A blank at the end of a line would be lost in transport.
    const bool lastOfLine = from + 1 == end || from[1] == '\r' || from[1] == '\n';
    const bool plain = (byte > ' ' && byte < 0x7F && byte != '=') || ((byte == ' ' || byte == '\t') && !lastOfLine);
    if (at - line + (plain ? 1 : 3) > kLongestLine) {
      *at++ = '=';
      *at++ = '\r';
      *at++ = '\n';
      line = at;
    }
    if (plain) {
      *at++ = byte;
    } else {
      at = PutHex(at, byte);
    }
  }
  if (at != line || utf8.isEmpty()) {
    *at++ = '\r';
    *at++ = '\n';
  }
  out->truncate(at - out->constData());
}

void AppendBase64(const QByteArray& bytes, QByteArray* out) {
  constexpr qsizetype kLine = 76;
  const QByteArray encoded = bytes.toBase64();
  out->reserve(out->size() + encoded.size() + encoded.size() / kLine * 2 + 2);
  for (qsizetype at = 0; at < encoded.size(); at += kLine) {
    out->append(QByteArrayView(encoded).sliced(at, std::min(kLine, encoded.size() - at))).append("\r\n");
  }
}

}  // namespace qbx
