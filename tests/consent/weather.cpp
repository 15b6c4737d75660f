#include "consent/weather.h"

#include <algorithm>

namespace qbx::consent {
namespace {

HttpReply Answer(const QString& body, bool isHtml = false) {
  HttpReply reply;
  reply.body = body;
  reply.status = 200;
  reply.isHtml = isHtml;
  return reply;
}

HttpReply Unanswered(const char* error, bool inDoubt) {
  HttpReply reply;
  reply.error = QLatin1String(error);
  reply.inDoubt = inDoubt;
  return reply;
}

QString Fields(int status, int credits, int id, int code) {
  return QStringLiteral("\"%1\"|\"%2\"|\"%3\"|\"%4\"|").arg(status).arg(credits).arg(id).arg(code);
}

HttpReply ErrorPage(int status) {
  // A proxy gives these three after it passed the text on.
  const bool inDoubt = status == 500 || status == 502 || status == 504;
  HttpReply reply;
  reply.error = QStringLiteral("The SMS gateway answered with HTTP status %1.").arg(status);
  reply.inDoubt = inDoubt;
  reply.status = status;
  reply.isHtml = true;
  return reply;
}

}  // namespace

HttpReply FakeGateway::Get(const QString& url) {
  if (url.contains(QLatin1String("sms/send_sms.asp?"))) return SendText(url);
  return Answer(QStringLiteral("\"1\"|\"%1\"|").arg(credits));
}

HttpReply FakeGateway::Accept(const Delivery& delivery) {
  postbox_.Received(delivery, Outcome::kAccepted, true);
  credits = std::max(0, credits - 1);
  return Answer(Fields(1, credits, ++lastId_, 0));
}

HttpReply FakeGateway::SendText(const QString& url) {
  const Delivery delivery = ReadText(url);
  const auto answer = [&](Outcome outcome, bool arrived, HttpReply reply) {
    postbox_.Received(delivery, outcome, arrived);
    return reply;
  };
  switch (weather.Next(9)) {
    case 1:
      return answer(Outcome::kRefused, false,
                    Answer(Fields(1, credits, 0, weather.Pick(std::array{2, 3, 22, 33, 77}))));
    case 2:
      return answer(Outcome::kRefused, false, ErrorPage(weather.Pick(std::array{400, 404, 429, 501, 503, 505})));
    case 3:
      return answer(Outcome::kUncertain, weather.Chance(50), ErrorPage(weather.Pick(std::array{500, 502, 504})));
    case 4:
      return answer(Outcome::kUncertain, weather.Chance(50),
                    Answer(QStringLiteral(" <html>Log in here, please</html>")));
    case 5:
      return answer(Outcome::kUncertain, weather.Chance(50), Answer(QStringLiteral("Log in here, please"), true));
    case 6:
      return answer(Outcome::kUncertain, weather.Chance(50), Unanswered("The gateway did not answer in time.", true));
    case 7:
      return answer(Outcome::kUncertain, weather.Chance(50), Unanswered("The gateway broke off.", true));
    case 8:
      return answer(Outcome::kRefused, false, Unanswered("The gateway could not be reached.", false));
    case 9:
      return answer(Outcome::kAccepted, true, Answer(QStringLiteral("accepted")));  // fewer than four fields
    default:
      return Accept(delivery);
  }
}

MailResult FakeMail::Send(const MailServer&, const MailEnvelope& envelope, const std::function<void(int)>& progress) {
  if (progress) progress(50);
  const Delivery delivery = ReadMail(envelope.recipients, envelope.message);
  const auto answer = [&](Outcome outcome, bool arrived, const MailResult& result) {
    postbox_.Received(delivery, outcome, arrived);
    return result;
  };
  const bool malformed = std::any_of(envelope.recipients.begin(), envelope.recipients.end(),
                                     [](const QString& to) { return to.indexOf(QLatin1Char('@')) < 1; });
  if (malformed)
    return answer(Outcome::kRefused, false,
                  {.outcome = MailOutcome::kRefused, .error = QStringLiteral("501 Bad recipient address syntax")});
  switch (weather.Next(5)) {
    case 1:
      return answer(Outcome::kRefused, false,
                    {.outcome = MailOutcome::kRefused, .error = QStringLiteral("550 No such user here")});
    case 2:
      return answer(Outcome::kRefused, false,
                    {.outcome = MailOutcome::kRefused,
                     .error = QStringLiteral("The mail server could not be reached."),
                     .transport = true});
    case 3:
      return answer(Outcome::kRefused, false,
                    {.outcome = MailOutcome::kRefused,
                     .error = QStringLiteral("The mail server refused the login."),
                     .transport = true});
    case 4:
      return answer(Outcome::kUncertain, weather.Chance(50),
                    {.outcome = MailOutcome::kUncertain,
                     .error = QStringLiteral("The mail server did not answer."),
                     .transport = true});
    case 5:
      return answer(Outcome::kRefused, false,
                    {.outcome = MailOutcome::kRefused, .error = QStringLiteral("451 Try again later")});
    default:
      return answer(Outcome::kAccepted, true, {.outcome = MailOutcome::kSent});
  }
}

}  // namespace qbx::consent
