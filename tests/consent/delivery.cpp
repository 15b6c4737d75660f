#include "consent/delivery.h"

#include "util/windows1252.h"

namespace qbx::consent {
namespace {

QByteArray PercentDecoded(QByteArray value) {
  value = QByteArray::fromPercentEncoding(value);
  return value.replace("\xC2\xA3", "\xA3");  // the gateway takes the pound sign as UTF-8
}

QString UrlValue(const QString& url, const char* name) {
  const QString mark = QLatin1Char('&') + QLatin1String(name) + QLatin1Char('=');
  const qsizetype start = url.indexOf(mark);
  if (start < 0) return {};
  return FromWindows1252(PercentDecoded(url.mid(start + mark.size()).section(QLatin1Char('&'), 0, 0).toLatin1()));
}

QByteArray QuotedPrintableDecoded(const QByteArray& text) {
  QByteArray decoded;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] != '=') {
      decoded += text[i];
      continue;
    }
    const QByteArray code = text.mid(i + 1, 2);
    if (code != "\r\n") decoded += QByteArray::fromHex(code);
    i += 2;
  }
  return decoded;
}

/// "=?UTF-8?Q?...?=" and "=?UTF-8?B?...?=" among plain words; the blank between two encoded words does not count.
QString HeaderDecoded(const QByteArray& header) {
  QByteArray decoded;
  bool lastEncoded = false;
  for (const QByteArray& word : header.split(' ')) {
    const QList<QByteArray> parts = word.split('?');
    const bool encoded = parts.size() == 5 && parts.front() == "=" && parts.back() == "=";
    if (!decoded.isEmpty() && !(encoded && lastEncoded)) decoded += ' ';
    if (!encoded)
      decoded += word;
    else if (parts[2].toUpper() == "B")
      decoded += QByteArray::fromBase64(parts[3]);
    else
      decoded += QuotedPrintableDecoded(QByteArray(parts[3]).replace('_', ' '));
    lastEncoded = encoded;
  }
  return QString::fromUtf8(decoded);
}

}  // namespace

Delivery ReadText(const QString& url) {
  return {.channel = Channel::kSms, .to = {UrlValue(url, "_To")}, .subject = {}, .text = UrlValue(url, "_Message")};
}

Delivery ReadMail(const QStringList& recipients, const QByteArray& message) {
  const qsizetype end = message.indexOf("\r\n\r\n");
  const QByteArray unfolded = QByteArray(message.left(end)).replace("\r\n ", " ");
  Delivery delivery{.channel = Channel::kEmail, .to = recipients, .subject = {}, .text = {}};
  bool quoted = false;
  for (const QByteArray& line : unfolded.split('\n')) {
    const QByteArray header = line.trimmed();
    if (header.startsWith("Subject: ")) delivery.subject = HeaderDecoded(header.mid(9));
    quoted = quoted || header.toLower() == "content-transfer-encoding: quoted-printable";
  }
  const QByteArray body = message.mid(end + 4);
  delivery.text = QString::fromUtf8(quoted ? QuotedPrintableDecoded(body) : body);
  return delivery;
}

}  // namespace qbx::consent
