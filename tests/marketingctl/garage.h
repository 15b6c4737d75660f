// A garage on disk and the real program beside it.

#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <map>
#include <memory>

#include "support/sandbox_process.h"
#include "support/temp_folder.h"
#include "support/wire/server_under_test.h"

namespace qbx::test {

/// A member of a JSON object.
[[nodiscard]] QJsonValue At(const QJsonValue& object, const char* name);
[[nodiscard]] int Number(const QJsonValue& object, const char* name);  ///< -1 when it is none
[[nodiscard]] QString Text(const QJsonValue& object, const char* name);
[[nodiscard]] bool Flag(const QJsonValue& object, const char* name);

/// The words of a command line, split at blanks; "%1" to "%9" stand for the values, which may hold blanks.
[[nodiscard]] QStringList Words(const char* line, const QStringList& values = {});

/// What one call of the program gave.
struct CtlResult {
  int code = -1;  ///< -1 when it crashed or was killed
  QByteArray out;
  QByteArray err;

  /// All of stdout as JSON; fails the test when it is anything else.
  [[nodiscard]] QJsonDocument Json() const;
  [[nodiscard]] QJsonObject Object() const { return Json().object(); }
  [[nodiscard]] QJsonArray Rows() const { return Json().array(); }
  /// The code of the error on stdout; empty when there is none.
  [[nodiscard]] QString Error() const { return At(At(Object(), "error"), "code").toString(); }
};

/// Runs the program with exactly these arguments and no QBX_ variable of the surroundings.
[[nodiscard]] CtlResult RunCtl(const QStringList& arguments, const QByteArray& input = {});

/// A program folder with a sample garage.
class Garage {
 public:
  explicit Garage(int customers = 60);

  [[nodiscard]] QString Path() const { return folder_.Path(); }
  [[nodiscard]] const TempFolder& Folder() const { return folder_; }
  [[nodiscard]] QString DatabaseFile() const { return folder_.File("QBXKorvelManager.db"); }

  /// A command as user Pat, with --json. \param line  as for Words
  CtlResult Run(const char* line, const QStringList& values = {}, const QByteArray& input = {}) const;
  /// The same, which has to end with 0. \return its JSON
  QJsonValue Done(const char* line, const QStringList& values = {}, const QByteArray& input = {}) const;
  /// The same, whose JSON is rows.
  QJsonArray Rows(const char* line, const QStringList& values = {}) const { return Done(line, values).toArray(); }
  /// A command under way.
  [[nodiscard]] std::unique_ptr<QProcess> Start(const char* line, const QStringList& values = {}) const;

  /// Changes the host's tables behind the program's back.
  void Sql(const char* statements) const;
  /// Gives every customer a mobile and an address that work, and consent.
  void MakeEverybodyReachable() const;
  /// Sends what this garage sends to the sandbox.
  void Use(const SandboxProcess& sandbox) const;
  /// All customers as rows of a new campaign, each with a text and an e-mail. \return the campaign's number
  [[nodiscard]] QString MakeCampaign() const;

 private:
  TempFolder folder_;
  SystemClock clock_;
  ServedFolder served_{folder_.Path(), clock_};
};

/// How many "texts" or "mails" the sandbox accepted, by number or address.
using Received = std::map<QString, int>;
[[nodiscard]] Received Accepted(const SandboxProcess& sandbox, const char* kind);
/// Messages recorded so far, read from the sandbox's files.
[[nodiscard]] int Recorded(const SandboxProcess& sandbox);
/// Waits until so many are recorded, or the process ends.
void WaitForRecords(const SandboxProcess& sandbox, int records, QProcess& process);

/// The end of a process that `Garage::Start` gave.
[[nodiscard]] CtlResult Finish(QProcess& process);

}  // namespace qbx::test
