#include "support/sandbox_process.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QRegularExpression>

#include "network/curl_session.h"

namespace qbx::test {
namespace {

constexpr int kStartTimeout = 30000;  // milliseconds; several tests may start one at the same time on a slow computer
constexpr int kEndTimeout = 5000;

std::size_t Collect(char* data, std::size_t size, std::size_t count, void* bytes) {
  static_cast<QByteArray*>(bytes)->append(data, static_cast<qsizetype>(size) * static_cast<qsizetype>(count));
  return size * count;
}

QByteArray Exchange(const QString& url, const QByteArray* body) {
  CurlSession session;
  QByteArray answer;
  session.Set(CURLOPT_URL, url.toUtf8().constData());
  session.Set(CURLOPT_PROXY, "");
  session.Set(CURLOPT_FAILONERROR, 1L);
  session.Set(CURLOPT_WRITEDATA, &answer);
  session.Set(CURLOPT_WRITEFUNCTION, &Collect);
  if (body != nullptr) session.Set(CURLOPT_COPYPOSTFIELDS, body->constData());
  const CURLcode code = session.Perform({});
  if (code != CURLE_OK) ADD_FAILURE() << url.toStdString() << ": " << session.ErrorText(code).toStdString();
  return answer;
}

}  // namespace

SandboxProcess::SandboxProcess(const QStringList& arguments) {
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(QStringLiteral(QBX_SANDBOX), QStringList{"--folder", folder_.Path(), "--with-parent"} + arguments);
  QElapsedTimer timer;
  timer.start();
  while (!process_.canReadLine() && timer.elapsed() < kStartTimeout && process_.state() != QProcess::NotRunning) {
    process_.waitForReadyRead(1000);
  }
  static const QRegularExpression kReady("sandbox ready http=(\\d+) smtp=(\\d+) smtps=(\\d+) page=(\\d+) folder=");
  const QString line = QString::fromUtf8(process_.readLine());
  const QRegularExpressionMatch match = kReady.match(line);
  if (!match.hasMatch()) ADD_FAILURE() << "the sandbox did not start: " << line.toStdString();
  httpPort_ = match.captured(1).toInt();
  smtpPort_ = match.captured(2).toInt();
  smtpsPort_ = match.captured(3).toInt();
  pagePort_ = match.captured(4).toInt();
}

SandboxProcess::~SandboxProcess() {
  process_.terminate();
  if (process_.waitForFinished(kEndTimeout)) return;
  process_.kill();
  process_.waitForFinished();
}

QByteArray SandboxProcess::Ask(const QString& path) const {
  return Exchange(QString("http://127.0.0.1:%1%2").arg(pagePort_).arg(path), nullptr);
}

void SandboxProcess::Steer(const QByteArray& wishes) const {
  (void)Exchange(QString("http://127.0.0.1:%1/api/steer").arg(pagePort_), &wishes);
}

void SandboxProcess::SetCredits(int credits) const {
  const QByteArray wish = QString("{\"credits\": %1}").arg(credits).toUtf8();
  (void)Exchange(QString("http://127.0.0.1:%1/api/credits").arg(pagePort_), &wish);
}

void SandboxProcess::Reset() const {
  const QByteArray nothing = "{}";
  (void)Exchange(QString("http://127.0.0.1:%1/api/reset").arg(pagePort_), &nothing);
}

}  // namespace qbx::test
