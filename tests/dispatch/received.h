// What the servers on loopback received.

#pragma once

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <vector>

#include "support/sandbox_process.h"

namespace qbx::test {

/// The records of a file of the sandbox ("texts.jsonl", "mails.jsonl"), in the order they came.
inline std::vector<QJsonObject> Received(const SandboxProcess& sandbox, const QString& file) {
  QFile records(sandbox.Folder() + QLatin1Char('/') + file);
  std::vector<QJsonObject> all;
  if (!records.open(QIODevice::ReadOnly)) return all;
  while (!records.atEnd())
    all.push_back(QJsonDocument::fromJson(records.readLine()).object());
  return all;
}
inline std::vector<QJsonObject> Texts(const SandboxProcess& sandbox) {
  return Received(sandbox, "texts.jsonl");
}
inline std::vector<QJsonObject> Mails(const SandboxProcess& sandbox) {
  return Received(sandbox, "mails.jsonl");
}

/// The recipients of a mail, blind copies included, as "a@x.test b@x.test".
inline QString Recipients(const QJsonObject& mail) {
  QStringList addresses;
  for (const auto& address : mail.value("to").toArray())
    addresses += address.toString();
  return addresses.join(QLatin1Char(' '));
}

/// Who got something, texts before mails, in order: telephone numbers and addresses.
inline QStringList Reached(const SandboxProcess& sandbox) {
  const auto arrived = [](const QJsonObject& record) {
    const QString outcome = record.value("outcome").toString();
    return outcome == "accepted" || record.value("detail") == "dropdata";
  };
  QStringList all;
  for (const QJsonObject& text : Texts(sandbox))
    if (arrived(text)) all += text.value("to").toString();
  for (const QJsonObject& mail : Mails(sandbox))
    if (arrived(mail)) all += Recipients(mail);
  return all;
}

}  // namespace qbx::test
