#include "network/mime_message.h"

#include <QFileInfo>
#include <QRandomGenerator>
#include <QUrl>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

#include "network/mime_text.h"
#include "platform/safe_file.h"

namespace qbx {
namespace {

constexpr qsizetype kLongestAddress = 320;  // 64 for the mailbox, 255 for the domain

/// An address for a header: a domain with letters beyond ASCII is written in ASCII.
QByteArray HeaderAddress(const QString& address) {
  const QString trimmed = address.trimmed();
  QByteArray utf8 = trimmed.toUtf8();
  if (utf8.size() == trimmed.size()) return utf8;
  const qsizetype at = trimmed.lastIndexOf(u'@');
  const QByteArray domain = QUrl::toAce(trimmed.mid(at + 1));
  return at < 0 || domain.isEmpty() ? utf8 : trimmed.left(at + 1).toUtf8() + domain;
}

QByteArray DomainOf(const QByteArray& address) {
  return address.mid(address.lastIndexOf('@') + 1);
}

QByteArray TwoDigits(int number) {
  return QByteArray::number(number).rightJustified(2, '0');
}

/// In English for every locale (RFC 5322, 3.3).
QByteArray DateText(const QDateTime& time) {
  static constexpr std::array<const char*, 7> kDays = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
  static constexpr std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const QDate date = time.date();
  const QTime clock = time.time();
  const int offset = time.offsetFromUtc() / 60;
  QByteArray text = kDays[static_cast<std::size_t>(date.dayOfWeek() - 1)];
  text += ", " + QByteArray::number(date.day()) + ' ' + kMonths[static_cast<std::size_t>(date.month() - 1)] + ' ';
  text += QByteArray::number(date.year()) + ' ' + TwoDigits(clock.hour()) + ':' + TwoDigits(clock.minute()) + ':';
  text += TwoDigits(clock.second()) + (offset < 0 ? " -" : " +");
  return text + TwoDigits(std::abs(offset) / 60) + TwoDigits(std::abs(offset) % 60);
}

QString CheckAddress(const QString& address, bool needsDomain) {
  const bool bad = BreaksHeader(address) || address.contains(u'<') || address.contains(u'>') ||
                   address.trimmed().isEmpty() || address.size() > kLongestAddress ||
                   (needsDomain && DomainOf(HeaderAddress(address)).isEmpty());
  if (bad || (needsDomain && !address.contains(u'@'))) {
    return QStringLiteral("\"%1\" is not an e-mail address.").arg(address.simplified().left(kLongestAddress));
  }
  return {};
}

QString CheckText(const QString& what, const QString& text) {
  return BreaksHeader(text) ? QStringLiteral("The %1 holds a line break.").arg(what) : QString();
}

bool IsHeaderName(const QByteArray& name) {
  return !name.isEmpty() &&
         std::all_of(name.begin(), name.end(), [](char c) { return c > 0x20 && c < 0x7F && c != ':'; });
}

/// \return the first fault in a message's headers; empty when there is none
QString CheckHeaders(const MailMessage& message) {
  QString problem = CheckAddress(message.from.address, true);
  if (problem.isEmpty() && !message.replyTo.isEmpty()) problem = CheckAddress(message.replyTo, false);
  if (problem.isEmpty()) problem = CheckText(QStringLiteral("sender's name"), message.from.name);
  if (problem.isEmpty()) problem = CheckText(QStringLiteral("subject"), message.subject);
  for (const MailAddress& to : message.to) {
    if (problem.isEmpty()) problem = RecipientProblem(to.address);
    if (problem.isEmpty()) problem = CheckText(QStringLiteral("recipient's name"), to.name);
  }
  for (const auto& [name, value] : message.headers) {
    if (problem.isEmpty() && !IsHeaderName(name)) problem = QStringLiteral("A header has no proper name.");
    if (problem.isEmpty()) problem = CheckText(QStringLiteral("header ") + QString::fromLatin1(name), value);
  }
  for (const MailAttachment& attachment : message.attachments) {
    if (problem.isEmpty()) problem = CheckText(QStringLiteral("attachment's name"), attachment.name);
  }
  return problem;
}

void AddAddress(const MailAddress& address, HeaderWriter* header) {
  const QByteArray bare = HeaderAddress(address.address);
  if (address.name.isEmpty()) {
    header->Words(bare);
    return;
  }
  header->DisplayName(address.name);
  header->Words('<' + bare + '>');
}

void AddHeader(QByteArrayView name, QByteArrayView words, QByteArray* out) {
  HeaderWriter header(out, name);
  header.Words(words);
  header.End();
}

void AddText(QByteArrayView name, const QString& text, QByteArray* out) {
  HeaderWriter header(out, name);
  header.Text(text);
  header.End();
}

void AddAddresses(const MailMessage& message, QByteArray* out) {
  HeaderWriter from(out, "From");
  AddAddress(message.from, &from);
  from.End();
  if (!message.replyTo.isEmpty()) AddHeader("Reply-To", HeaderAddress(message.replyTo), out);
  if (message.to.empty()) return;
  HeaderWriter to(out, "To");
  for (std::size_t index = 0; index < message.to.size(); ++index) {
    if (index > 0) to.Append(",");
    AddAddress(message.to[index], &to);
  }
  to.End();
}

void AddBody(const MailMessage& message, QByteArray* out) {
  out->append(message.isHtml ? "Content-Type: text/html; charset=utf-8\r\n"
                             : "Content-Type: text/plain; charset=utf-8\r\n");
  out->append("Content-Transfer-Encoding: quoted-printable\r\n\r\n");
  AppendQuotedPrintable(message.body, out);
}

/// The file name as a parameter (RFC 2231): in quotes when it is plain, otherwise as percent-encoded UTF-8.
QByteArray FileNameParameter(const QString& name) {
  const QByteArray utf8 = name.toUtf8();
  const bool plain =
      std::all_of(utf8.begin(), utf8.end(), [](char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; });
  return plain ? "filename=\"" + utf8 + '"' : "filename*=UTF-8''" + QUrl::toPercentEncoding(name);
}

/// \return what is wrong; empty when the attachment was added
QString AddAttachment(const MailAttachment& attachment, QByteArray* out) {
  std::optional<QByteArray> bytes = attachment.bytes;
  if (!attachment.path.isEmpty()) bytes = ReadWholeFile(attachment.path);
  if (!bytes) return QStringLiteral("The attachment \"%1\" could not be read.").arg(attachment.path);
  const QString name = attachment.name.isEmpty() ? QFileInfo(attachment.path).fileName() : attachment.name;
  out->append("Content-Type: application/octet-stream\r\nContent-Transfer-Encoding: base64\r\n");
  out->append("Content-Disposition: attachment;\r\n " + FileNameParameter(name) + "\r\n\r\n");
  AppendBase64(*bytes, out);
  return {};
}

QString AddParts(const MailMessage& message, const QByteArray& boundary, QByteArray* out) {
  out->append("Content-Type: multipart/mixed;\r\n boundary=\"" + boundary + "\"\r\n\r\n--" + boundary + "\r\n");
  AddBody(message, out);
  for (const MailAttachment& attachment : message.attachments) {
    out->append("--" + boundary + "\r\n");
    QString problem = AddAttachment(attachment, out);
    if (!problem.isEmpty()) return problem;
  }
  out->append("--" + boundary + "--\r\n");
  return {};
}

}  // namespace

QString RecipientProblem(const QString& address) {
  return CheckAddress(address, false);
}

MimeWriter::MimeWriter(const Clock& clock)
    : clock_(clock), seed_(QByteArray::number(QRandomGenerator::system()->generate64(), 36)) {}

QByteArray MimeWriter::NextToken() {
  return seed_ + '.' + QByteArray::number(++count_, 36);
}

MimeResult MimeWriter::Write(const MailMessage& message) {
  constexpr qsizetype kHeaderRoom = 1024;
  QString problem = CheckHeaders(message);
  if (!problem.isEmpty()) return {{}, problem};
  const QByteArray token = NextToken();
  QByteArray out;
  out.reserve(kHeaderRoom + message.body.size() * 4);
  AddHeader("Date", DateText(clock_.Now()), &out);
  AddAddresses(message, &out);
  AddHeader("Message-ID", '<' + token + '@' + DomainOf(HeaderAddress(message.from.address)) + '>', &out);
  AddText("Subject", message.subject, &out);
  for (const auto& [name, value] : message.headers)
    AddText(name, value, &out);
  out.append("MIME-Version: 1.0\r\n");
  if (message.attachments.empty()) {
    AddBody(message, &out);
  } else {
    // "=_" occurs neither in quoted-printable nor in base64, so no body holds the boundary.
    problem = AddParts(message, "=_" + token, &out);
  }
  if (!problem.isEmpty()) return {{}, problem};
  return {out, {}};
}

}  // namespace qbx
