#include "tds_server/commands.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>

namespace qbx::tds {

const char* const kCommandHelp =
    R"(While it runs, it reads commands from its input, one line of JSON each, and answers each with its counters:
  {}                                          only the counters
  {"fault": "close", "at": "request", "match": "UPDATE", "skip": 2, "times": 1}
  {"clear": true}                             no more faults
  {"listening": false}                        refuses connections until it is true
  {"endConnections": true}                    as a server that is started anew
fault: close, reset, hang (no cancelling is heeded), slow ("ms"), error ("number", "text"), no-encryption, wrong-password, offline.
at: connect, login, request (before it is carried out), answered (after it was), row (in the middle of row number "row").
Only requests with the text "match" in them count; "skip" of them go well first; "times": 0 is for ever.
A command with another key is refused. The end of the input ends the server.)";

namespace {

template <typename Meaning>
struct Word {
  const char* word;
  Meaning meaning;
};

constexpr std::array kKindWords = {
    Word<FaultKind>{"close", FaultKind::kClose},
    Word<FaultKind>{"reset", FaultKind::kReset},
    Word<FaultKind>{"hang", FaultKind::kHang},
    Word<FaultKind>{"slow", FaultKind::kSlow},
    Word<FaultKind>{"error", FaultKind::kError},
    Word<FaultKind>{"no-encryption", FaultKind::kNoEncryption},
    Word<FaultKind>{"wrong-password", FaultKind::kError},
    Word<FaultKind>{"offline", FaultKind::kError},
};

constexpr std::array kMomentWords = {
    Word<FaultMoment>{"connect", FaultMoment::kConnect}, Word<FaultMoment>{"login", FaultMoment::kLogin},
    Word<FaultMoment>{"request", FaultMoment::kRequest}, Word<FaultMoment>{"answered", FaultMoment::kAnswered},
    Word<FaultMoment>{"row", FaultMoment::kRow},
};

/// What a command may hold.
struct CommandKey {
  const char* name;
  QJsonValue::Type type;
  bool ofFault = false;
};

constexpr std::array kKeys = {
    CommandKey{"clear", QJsonValue::Bool},          CommandKey{"listening", QJsonValue::Bool},
    CommandKey{"endConnections", QJsonValue::Bool}, CommandKey{"fault", QJsonValue::String},
    CommandKey{"at", QJsonValue::String, true},     CommandKey{"match", QJsonValue::String, true},
    CommandKey{"skip", QJsonValue::Double, true},   CommandKey{"times", QJsonValue::Double, true},
    CommandKey{"row", QJsonValue::Double, true},    CommandKey{"ms", QJsonValue::Double, true},
    CommandKey{"number", QJsonValue::Double, true}, CommandKey{"text", QJsonValue::String, true},
};

QString TypeName(QJsonValue::Type type) {
  return type == QJsonValue::Bool     ? QStringLiteral("true or false")
         : type == QJsonValue::Double ? QStringLiteral("a number")
                                      : QStringLiteral("a text");
}

/// \return what is wrong with the keys of a command; empty: nothing
QString KeyProblem(const QJsonObject& command) {
  for (auto given = command.begin(); given != command.end(); ++given) {
    const auto known =
        std::ranges::find_if(kKeys, [&given](const CommandKey& key) { return given.key() == QLatin1String(key.name); });
    if (known == kKeys.end()) return QStringLiteral("no such key: %1").arg(given.key());
    if (given->type() != known->type) return QStringLiteral("%1 has to be %2").arg(given.key(), TypeName(known->type));
    if (known->ofFault && !command.contains(QLatin1String("fault")))
      return QStringLiteral("%1 says something of a fault, and the command has none").arg(given.key());
  }
  return {};
}

template <typename Meaning, std::size_t count>
bool Mean(const std::array<Word<Meaning>, count>& words, const QString& word, Meaning& meaning) {
  const auto found =
      std::ranges::find_if(words, [&word](const auto& each) { return word == QLatin1String(each.word); });
  if (found == words.end()) return false;
  meaning = found->meaning;
  return true;
}

QByteArray Line(const QJsonObject& object) {
  return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

/// \return what is wrong with the command; empty: nothing
QString AddFault(Server& server, const QJsonObject& command) {
  const auto number = [&command](const char* name, int otherwise) {
    return command[QLatin1String(name)].toInt(otherwise);
  };
  const QString kind = command[QLatin1String("fault")].toString();
  Fault fault;
  if (!Mean(kKindWords, kind, fault.kind)) return QStringLiteral("no such fault: %1").arg(kind);
  const QString given = command[QLatin1String("at")].toString();
  const bool atLogin = kind == QLatin1String("wrong-password") || kind == QLatin1String("offline");
  const QString moment = kind == QLatin1String("no-encryption") ? QStringLiteral("connect")
                         : atLogin                              ? QStringLiteral("login")
                                                                : given;
  if (!given.isEmpty() && given != moment) return QStringLiteral("%1 happens at %2 only").arg(kind, moment);
  if (!Mean(kMomentWords, moment, fault.moment)) return QStringLiteral("no such moment: %1").arg(moment);
  fault.match = command[QLatin1String("match")].toString();
  fault.skip = number("skip", fault.skip);
  fault.times = number("times", fault.times);
  fault.row = number("row", fault.row);
  fault.milliseconds = number("ms", fault.milliseconds);
  fault.number = number("number", kind == QLatin1String("wrong-password") ? kLoginFailed
                                  : kind == QLatin1String("offline")      ? kCannotOpenDatabase
                                                                          : fault.number);
  fault.text = command[QLatin1String("text")].toString(QStringLiteral("A fault on demand."));
  server.PlannedFaults().Add(fault);
  return {};
}

QJsonObject CountersOf(Server& server) {
  const Counters& counted = server.Counted();
  return {{QStringLiteral("connections"), counted.connections.load()},
          {QStringLiteral("logins"), counted.logins.load()},
          {QStringLiteral("encryptedLogins"), counted.encryptedLogins.load()},
          {QStringLiteral("requests"), counted.requests.load()},
          {QStringLiteral("attentions"), counted.attentions.load()},
          {QStringLiteral("faults"), server.PlannedFaults().Happened()}};
}

}  // namespace

QByteArray CarryOutCommand(Server& server, const QByteArray& line) {
  const QJsonDocument document = QJsonDocument::fromJson(line);
  if (!document.isObject()) return Line({{QStringLiteral("error"), QStringLiteral("a command is one JSON object")}});
  const QJsonObject command = document.object();
  if (const QString wrong = KeyProblem(command); !wrong.isEmpty()) return Line({{QStringLiteral("error"), wrong}});
  if (command[QLatin1String("clear")].toBool()) server.PlannedFaults().Clear();
  if (command.contains(QLatin1String("listening"))) server.SetListening(command[QLatin1String("listening")].toBool());
  if (command[QLatin1String("endConnections")].toBool()) server.EndConnections();
  const QString wrong = command.contains(QLatin1String("fault")) ? AddFault(server, command) : QString();
  if (!wrong.isEmpty()) return Line({{QStringLiteral("error"), wrong}});
  return Line(CountersOf(server));
}

}  // namespace qbx::tds
