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
  parser.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral(QBX_TEST_FOLDER "/parse_mail.py")});
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
  message.from = {QStringLiteral("The Garage"), QStringLiteral("garage@example.org")};
  message.to = {{QString(), QStringLiteral("ann@example.org")}};
  message.subject = QStringLiteral("Your service is due");
  message.body = QStringLiteral("Hello\r\n");
  return message;
}

TEST(MimeWriter, APlainMessageReadsAsExpected) {
  FixedClock clock(QDateTime(QDate(2026, 3, 4), QTime(9, 5, 7), Qt::OffsetFromUTC, -(3 * 60 + 30) * 60));
  MimeWriter writer(clock);
  MailMessage message = Simple();
  message.replyTo = QStringLiteral("office@example.org");
  message.headers = {{"X-Priority", QStringLiteral("3")}};
  MimeResult result = writer.Write(message);
  result.bytes.replace(QRegularExpression(QStringLiteral("<.*@example.org>"))
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
      QStringLiteral("Plain"),
      QStringLiteral("O'Neil, Sons (\"Best\" \\ Ltd.); a@b:c"),
      QStringLiteral("Werkstatt Müller & Söhne"),
      QStringLiteral("Автосервис на Лесной улице, дом 12, корпус 3, второй этаж, вход со двора"),
      QStringLiteral("😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗😀🚗 tyres"),
      QStringLiteral("two  blanks and =?UTF-8?Q?no_word?="),
      QStringLiteral("a_b=c?d"),
      QString(300, u'x'),
      QStringLiteral("word ").repeated(60).trimmed(),
      QStringLiteral("é ").repeated(200).trimmed(),
      QStringLiteral("tab\tinside"),
  };
  const FixedClock clock;
  MimeWriter writer(clock);
  for (const QString& text : texts) {
    MailMessage message = Simple();
    message.subject = text;
    message.from.name = text;
    message.to = {{text, QStringLiteral("ann@example.org")}, {text, QStringLiteral("bob@example.org")}};
    const MimeResult result = writer.Write(message);
    ASSERT_EQ(result.error, QString());
    ExpectWellFormed(result.bytes);
    const QJsonObject parsed = Parsed(result.bytes);
    EXPECT_EQ(parsed[QLatin1String("defects")].toArray(), QJsonArray()) << text.toStdString();
    EXPECT_EQ(parsed[QLatin1String("headers")][QLatin1String("Subject")].toString(), text);
    const QJsonArray expected = {QJsonArray{text, QStringLiteral("ann@example.org")},
                                 QJsonArray{text, QStringLiteral("bob@example.org")}};
    EXPECT_EQ(parsed[QLatin1String("addresses")][QLatin1String("To")].toArray(), expected)
        << result.bytes.toStdString();
    EXPECT_EQ(parsed[QLatin1String("addresses")][QLatin1String("From")][0][0].toString(), text);
  }
}

TEST(MimeWriter, BodiesSurvive) {
  const QString texts[] = {
      QString(),
      QStringLiteral("no line end"),
      QStringLiteral("mixed\rline\nends\r\n\r\n\nlast"),
      QStringLiteral("blank at the end \r\ntab at the end\t\r\n "),
      QStringLiteral(".\r\n..\r\n. dot\r\nFrom here\r\n= equals =3D\r\n"),
      QStringLiteral("Grüße — £5 für 😀 ").repeated(40),
      QString(75, u'a') + QLatin1String("\r\n") + QString(76, u'b') + QLatin1String("\r\n") + QString(77, u'c') +
          QLatin1String(" \r\n") + QString(74, u'd') + QStringLiteral("é\r\n") + QString(2000, u'=') +
          QString(1000, u'\x7f'),
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
    EXPECT_EQ(parsed[QLatin1String("type")].toString(), QStringLiteral("text/html"));
    QString expected = text;
    expected.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    if (!expected.endsWith(u'\n')) expected.append(u'\n');
    EXPECT_EQ(parsed[QLatin1String("body")].toString().replace(QLatin1String("\r\n"), QLatin1String("\n")), expected);
  }
}

TEST(MimeWriter, AttachmentsSurvive) {
  const TempFolder folder;
  QByteArray bytes;
  for (int value = 0; value < 1000; ++value)
    bytes.append(static_cast<char>(value));
  MailMessage message = Simple();
  message.attachments = {{QString(), folder.Write(QStringLiteral("Rechnung \"März\".pdf"), bytes), {}},
                         {QStringLiteral("plain name.txt"), QString(), "hello"},
                         {QStringLiteral("empty"), QString(), {}}};
  const FixedClock clock;
  MimeWriter writer(clock);
  const MimeResult result = writer.Write(message);
  ASSERT_EQ(result.error, QString());
  ExpectWellFormed(result.bytes);
  const QJsonObject parsed = Parsed(result.bytes);
  EXPECT_EQ(parsed[QLatin1String("defects")].toArray(), QJsonArray());
  EXPECT_EQ(parsed[QLatin1String("body")].toString(), QStringLiteral("Hello"));
  const QJsonArray expected = {
      QJsonArray{QStringLiteral("Rechnung \"März\".pdf"), QString::fromLatin1(bytes.toHex())},
      QJsonArray{QStringLiteral("plain name.txt"), QString::fromLatin1(QByteArray("hello").toHex())},
      QJsonArray{QStringLiteral("empty"), QString(QLatin1String(""))}};
  EXPECT_EQ(parsed[QLatin1String("attachments")].toArray(), expected);
  message.attachments = {{QString(), folder.File(QStringLiteral("none.pdf")), {}}};
  EXPECT_TRUE(writer.Write(message).error.contains(QLatin1String("none.pdf")));
}

TEST(MimeWriter, RefusesWhatWouldBecomeAnotherHeader) {
  const QString bad = QStringLiteral("x\r\nBcc: victim@example.org");
  const std::function<void(MailMessage&)> spoil[] = {
      [&](MailMessage& m) { m.subject = bad; },
      [&](MailMessage& m) { m.subject = QStringLiteral("\n"); },
      [&](MailMessage& m) { m.subject = QString(QChar(0)); },
      [&](MailMessage& m) { m.from.name = bad; },
      [&](MailMessage& m) { m.from.address = QStringLiteral("a@b") + bad; },
      [&](MailMessage& m) { m.from.address = QStringLiteral("nobody"); },
      [&](MailMessage& m) { m.from.address = QStringLiteral("nobody@"); },
      [&](MailMessage& m) { m.replyTo = bad; },
      [&](MailMessage& m) { m.to[0].name = bad; },
      [&](MailMessage& m) { m.to[0].address = bad; },
      [&](MailMessage& m) { m.to[0].address = QStringLiteral("a@b>, <victim@example.org"); },
      [&](MailMessage& m) { m.to[0].address = QStringLiteral(" "); },
      [&](MailMessage& m) {
        m.headers = {{"X", bad}};
      },
      [&](MailMessage& m) {
        m.headers = {{"Bcc: victim@example.org\r\nX", QStringLiteral("1")}};
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
  message.from.address = QStringLiteral("werkstatt@müller.example");
  QStringList ids;
  for (MimeWriter* writer : {&first, &first, &second}) {
    ids.append(Parsed(writer->Write(message).bytes)[QLatin1String("headers")][QLatin1String("Message-ID")].toString());
    EXPECT_TRUE(ids.last().endsWith(QLatin1String("@xn--mller-kva.example>"))) << ids.last().toStdString();
  }
  EXPECT_EQ(ids.removeDuplicates(), 0);
}

}  // namespace
}  // namespace qbx
