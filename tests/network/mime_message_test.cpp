#include "network/mime_message.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

#include "support/fixed_clock.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

using test::FixedClock;
using test::TempFolder;

/// What another program's parser makes of a message.
QJsonObject Parsed(const QByteArray& bytes) {
  QProcess parser;
  parser.start("/usr/bin/python3", {QStringLiteral(QBX_TEST_FOLDER "/parse_mail.py")});
  parser.write(bytes);
  parser.closeWriteChannel();
  EXPECT_TRUE(parser.waitForFinished()) << parser.errorString().toStdString();
  EXPECT_EQ(parser.exitCode(), 0) << parser.readAllStandardError().toStdString();
  return QJsonDocument::fromJson(parser.readAllStandardOutput()).object();
}

/// Lines end in CR LF, are ASCII and no longer than 78 characters.
void ExpectWellFormed(const QByteArray& bytes) {
  EXPECT_TRUE(bytes.endsWith("\r\n"));
  EXPECT_EQ(bytes.count('\n'), bytes.count("\r\n"));
  EXPECT_EQ(bytes.count('\r'), bytes.count("\r\n"));
  for (const QByteArray& line : bytes.split('\n')) {
    EXPECT_LE(line.trimmed().size(), line.contains("=?UTF-8?") ? 76 : 78) << line.toStdString();
  }
  EXPECT_TRUE(std::all_of(bytes.begin(), bytes.end(), [](char c) { return c > 0; }));
}

MailMessage Simple() {
  MailMessage message;
  message.from = {"The Garage", "garage@example.org"};
  message.to = {{QString(), "ann@example.org"}};
  message.subject = "Your service is due";
  message.body = "Hello\r\n";
  return message;
}

TEST(MimeWriter, APlainMessageReadsAsExpected) {
  FixedClock clock(QDateTime(QDate(2026, 3, 4), QTime(9, 5, 7), Qt::OffsetFromUTC, -(3 * 60 + 30) * 60));
  MimeWriter writer(clock);
  MailMessage message = Simple();
  message.replyTo = "office@example.org";
  message.headers = {{"X-Priority", "3"}};
  MimeResult result = writer.Write(message);
  result.bytes.replace(QRegularExpression("<.*@example.org>")
                           .match(QString::fromLatin1(result.bytes.mid(result.bytes.indexOf("Message-ID"))))
                           .captured()
                           .toLatin1(),
                       "<ID>");
  EXPECT_EQ(result.bytes,
            "Date: Wed, 4 Mar 2026 09:05:07 -0330\r\nFrom: The Garage <garage@example.org>\r\nReply-To: "
            "office@example.org\r\n"
            "To: ann@example.org\r\nMessage-ID: <ID>\r\nSubject: Your service is due\r\nX-Priority: 3\r\nMIME-Version: "
            "1.0\r\n"
            "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: quoted-printable\r\n\r\nHello\r\n");
}

TEST(MimeWriter, NamesAndSubjectsSurvive) {
  const QString texts[] = {
      "Plain",
      "O'Neil, Sons (\"Best\" \\ Ltd.); a@b:c",
      "Werkstatt Müller & Söhne",
      "Автосервис на Лесной улице, дом 12, корпус 3, второй этаж, вход со двора",
      "😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗 tyres",
      "two  blanks and =?UTF-8?Q?no_word?=",
      "a_b=c?d",
      QString(300, u'x'),
      QString("word ").repeated(60).trimmed(),
      QString("é ").repeated(200).trimmed(),
      "tab\tinside",
  };
  const FixedClock clock;
  MimeWriter writer(clock);
  for (const QString& text : texts) {
    MailMessage message = Simple();
    message.subject = text;
    message.from.name = text;
    message.to = {{text, "ann@example.org"}, {text, "bob@example.org"}};
    const MimeResult result = writer.Write(message);
    ASSERT_EQ(result.error, QString());
    ExpectWellFormed(result.bytes);
    const QJsonObject parsed = Parsed(result.bytes);
    EXPECT_EQ(parsed["defects"].toArray(), QJsonArray()) << text.toStdString();
    EXPECT_EQ(parsed["headers"][u"Subject"].toString(), text);
    const QJsonArray expected = {QJsonArray{text, "ann@example.org"}, QJsonArray{text, "bob@example.org"}};
    EXPECT_EQ(parsed["addresses"][u"To"].toArray(), expected) << result.bytes.toStdString();
    EXPECT_EQ(parsed["addresses"][u"From"][0][0].toString(), text);
  }
}

TEST(MimeWriter, BodiesSurvive) {
  const QString texts[] = {
      QString(),
      "no line end",
      "mixed\rline\nends\r\n\r\n\nlast",
      "blank at the end \r\ntab at the end\t\r\n ",
      ".\r\n..\r\n. dot\r\nFrom here\r\n= equals =3D\r\n",
      QString("Grüße — £5 für 😀 ").repeated(40),
      QString(75, u'a') + QString("\r\n") + QString(76, u'b') + QString("\r\n") + QString(77, u'c') + QString(" \r\n") +
          QString(74, u'd') + QString("é\r\n") + QString(2000, u'=') + QString(1000, u'\x7f'),
  };
  const FixedClock clock;
  MimeWriter writer(clock);
  for (const QString& text : texts) {
    MailMessage message = Simple();
    message.body = text;
    message.isHtml = true;
    const MimeResult result = writer.Write(message);
    ExpectWellFormed(result.bytes);
    const QJsonObject parsed = Parsed(result.bytes);
    EXPECT_EQ(parsed["type"].toString(), "text/html");
    QString expected = text;
    expected.replace("\r\n", "\n").replace(u'\r', u'\n');
    if (!expected.endsWith(u'\n')) expected.append(u'\n');
    EXPECT_EQ(parsed["body"].toString().replace("\r\n", "\n"), expected);
  }
}

TEST(MimeWriter, AttachmentsSurvive) {
  const TempFolder folder;
  QByteArray bytes;
  for (int value = 0; value < 1000; ++value)
    bytes.append(static_cast<char>(value));
  MailMessage message = Simple();
  message.attachments = {{QString(), folder.Write("Rechnung \"März\".pdf", bytes), {}},
                         {"plain name.txt", QString(), "hello"},
                         {"empty", QString(), {}}};
  const FixedClock clock;
  MimeWriter writer(clock);
  const MimeResult result = writer.Write(message);
  ASSERT_EQ(result.error, QString());
  ExpectWellFormed(result.bytes);
  const QJsonObject parsed = Parsed(result.bytes);
  EXPECT_EQ(parsed["defects"].toArray(), QJsonArray());
  EXPECT_EQ(parsed["body"].toString(), "Hello");
  const QJsonArray expected = {QJsonArray{"Rechnung \"März\".pdf", QString::fromLatin1(bytes.toHex())},
                               QJsonArray{"plain name.txt", QString::fromLatin1(QByteArray("hello").toHex())},
                               QJsonArray{"empty", QString("")}};
  EXPECT_EQ(parsed["attachments"].toArray(), expected);
  message.attachments = {{QString(), folder.File("none.pdf"), {}}};
  EXPECT_TRUE(writer.Write(message).error.contains("none.pdf"));
}

TEST(MimeWriter, RefusesWhatWouldBecomeAnotherHeader) {
  const QString bad = "x\r\nBcc: victim@example.org";
  const std::function<void(MailMessage&)> spoil[] = {
      [&](MailMessage& m) { m.subject = bad; },
      [&](MailMessage& m) { m.subject = "\n"; },
      [&](MailMessage& m) { m.subject = QString(QChar(0)); },
      [&](MailMessage& m) { m.from.name = bad; },
      [&](MailMessage& m) { m.from.address = QString("a@b") + bad; },
      [&](MailMessage& m) { m.from.address = "nobody"; },
      [&](MailMessage& m) { m.from.address = "nobody@"; },
      [&](MailMessage& m) { m.replyTo = bad; },
      [&](MailMessage& m) { m.to[0].name = bad; },
      [&](MailMessage& m) { m.to[0].address = bad; },
      [&](MailMessage& m) { m.to[0].address = "a@b>, <victim@example.org"; },
      [&](MailMessage& m) { m.to[0].address = " "; },
      [&](MailMessage& m) {
        m.headers = {{"X", bad}};
      },
      [&](MailMessage& m) {
        m.headers = {{"Bcc: victim@example.org\r\nX", "1"}};
      },
      [&](MailMessage& m) {
        m.attachments = {{bad, QString(), "x"}};
      },
  };
  const FixedClock clock;
  MimeWriter writer(clock);
  for (const auto& change : spoil) {
    MailMessage message = Simple();
    change(message);
    const MimeResult result = writer.Write(message);
    EXPECT_TRUE(result.bytes.isEmpty()) << result.bytes.toStdString();
    EXPECT_FALSE(result.error.isEmpty());
    EXPECT_FALSE(result.error.contains(u'\n'));
  }
}

TEST(MimeWriter, EveryMessageHasAnIdOfItsOwn) {
  const FixedClock clock;
  MimeWriter first(clock);
  MimeWriter second(clock);
  MailMessage message = Simple();
  message.from.address = "werkstatt@müller.example";
  QStringList ids;
  for (MimeWriter* writer : {&first, &first, &second}) {
    ids.append(Parsed(writer->Write(message).bytes)["headers"][u"Message-ID"].toString());
    EXPECT_TRUE(ids.last().endsWith("@xn--mller-kva.example>")) << ids.last().toStdString();
  }
  EXPECT_EQ(ids.removeDuplicates(), 0);
}

}  // namespace
}  // namespace qbx
