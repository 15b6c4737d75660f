#include "tds_server/requests.h"

#include "database/embedded/errors.h"
#include "tds_server/catalogue.h"
#include "tds_server/error_wording.h"

namespace qbx::tds {
namespace {

enum ProcedureNumber { kExecuteSql = 10, kPrepare = 11, kExecute = 12, kPrepareExecute = 13, kUnprepare = 15 };

enum TransactionRequest { kBegin = 5, kCommit = 7, kRollback = 8 };

struct KnownProcedure {
  const char* name;
  int number;
};
constexpr KnownProcedure kKnownProcedures[] = {
    {"sp_executesql", kExecuteSql},   {"sp_prepare", kPrepare},     {"sp_execute", kExecute},
    {"sp_prepexec", kPrepareExecute}, {"sp_unprepare", kUnprepare},
};

void SkipHeaders(ByteReader& in) {
  const quint32 length = in.U32();
  if (length < 4) throw ProtocolError("headers without a length");
  in.Skip(length - 4);
}

/// The names in "@a int,@b nvarchar(40)".
QStringList DeclaredNames(const QString& declaration) {
  const QByteArray utf8 = declaration.toUtf8();
  std::vector<Token> tokens;
  Tokenize({utf8.constData(), static_cast<std::size_t>(utf8.size())}, tokens);
  QStringList names;
  for (const Token& token : tokens) {
    if (token.kind == TokenKind::kParameter) names += QString::fromStdString(token.Content());
  }
  return names;
}

QString TextAt(const std::vector<SentParameter>& parameters, std::size_t index) {
  return index < parameters.size() ? parameters[index].value.ToText() : QString();
}

}  // namespace

void Requests::Carry(const Message& message, Answer& answer) {
  ByteReader in(message.body);
  SkipHeaders(in);
  switch (message.type) {
    case MessageType::kBatch:
      return Batch(in, answer);
    case MessageType::kTransaction:
      return Transaction(in, answer);
    case MessageType::kProcedure:
      while (!in.AtEnd()) {
        const ProcedureRequest request = ReadProcedure(in);
        Procedure(request, answer, !in.AtEnd());
      }
      return;
    default:
      throw ProtocolError("a message that is no request");
  }
}

QString Requests::TextOf(const Message& message) {
  ByteReader in(message.body);
  SkipHeaders(in);
  if (message.type == MessageType::kBatch) return in.Text(in.Left() / 2);
  if (message.type == MessageType::kTransaction) {
    const int what = in.U16();
    return what == kBegin    ? QStringLiteral("BEGIN TRAN")
           : what == kCommit ? QStringLiteral("COMMIT TRAN")
                             : QStringLiteral("ROLLBACK TRAN");
  }
  const ProcedureRequest request = ReadProcedure(in);
  QString text = request.name;
  for (const SentParameter& parameter : request.parameters) {
    if (parameter.value.Type() == ValueType::kText) text += u' ' + parameter.value.ToText();
  }
  return text;
}

Requests::ProcedureRequest Requests::ReadProcedure(ByteReader& in) {
  constexpr quint16 kByNumber = 0xFFFF;
  constexpr quint8 kNextRequest = 0xFF;
  ProcedureRequest request;
  const quint16 length = in.U16();
  if (length == kByNumber) {
    request.number = in.U16();
  } else {
    request.name = in.Text(length);
  }
  in.Skip(2);
  while (!in.AtEnd() && in.Peek() != kNextRequest)
    request.parameters.push_back(ReadParameter(in));
  if (!in.AtEnd()) in.Skip(1);
  for (const KnownProcedure& known : kKnownProcedures) {
    if (request.name.compare(QLatin1String(known.name), Qt::CaseInsensitive) == 0) request.number = known.number;
    if (request.name.isEmpty() && request.number == known.number) request.name = QLatin1String(known.name);
  }
  return request;
}

void Requests::Batch(ByteReader& in, Answer& answer) {
  Variables variables;
  StatementRunner(client_, answer, Answer::Statement::kOfBatch).Run(in.Text(in.Left() / 2), variables, false);
}

void Requests::Procedure(const ProcedureRequest& request, Answer& answer, bool more) {
  bool good = true;
  switch (request.number) {
    case kExecuteSql:
      RunText({DeclaredNames(TextAt(request.parameters, 1)), TextAt(request.parameters, 0)},
              std::span(request.parameters).subspan(std::min<std::size_t>(2, request.parameters.size())), answer);
      break;
    case kPrepare:
    case kPrepareExecute:
      PrepareAndRun(request, answer, request.number == kPrepareExecute);
      break;
    case kExecute:
      good = Execute(request, answer);
      break;
    case kUnprepare:
      if (!request.parameters.empty()) prepared_.remove(request.parameters[0].value.ToInt());
      break;
    default:
      return CallNamed(request, answer, more);
  }
  if (request.number == kPrepare || request.number == kPrepareExecute)
    answer.ReturnValue(0, QStringLiteral("@handle"), Value(handles_));
  answer.End(Answer::Statement::kProcedure, {.more = more, .failed = !good});
}

void Requests::RunText(const PreparedText& text, std::span<const SentParameter> values, Answer& answer) {
  Variables variables;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const QString name = !values[i].name.isEmpty() ? values[i].name : text.names.value(static_cast<qsizetype>(i));
    variables.Set(name, values[i].value);
  }
  const bool good = StatementRunner(client_, answer, Answer::Statement::kOfProcedure).Run(text.sql, variables, true);
  answer.ReturnStatus(good ? 0 : -6);
}

void Requests::PrepareAndRun(const ProcedureRequest& request, Answer& answer, bool run) {
  const PreparedText text{DeclaredNames(TextAt(request.parameters, 1)), TextAt(request.parameters, 2)};
  prepared_.insert(++handles_, text);
  if (run) {
    RunText(text, std::span(request.parameters).subspan(std::min<std::size_t>(3, request.parameters.size())), answer);
  } else {
    answer.ReturnStatus(0);
  }
}

bool Requests::Execute(const ProcedureRequest& request, Answer& answer) {
  constexpr int kNoSuchHandle = 8179;
  const qint64 handle = request.parameters.empty() ? 0 : request.parameters[0].value.ToInt();
  const auto found = prepared_.constFind(handle);
  if (found == prepared_.constEnd()) {
    answer.Message(kNoSuchHandle, 16, QStringLiteral("Could not find prepared statement with handle %1.").arg(handle));
    return false;
  }
  RunText(*found, std::span(request.parameters).subspan(1), answer);
  return true;
}

void Requests::CallNamed(const ProcedureRequest& request, Answer& answer, bool more) {
  std::optional<int> status;
  if (request.name.startsWith(QLatin1String("sp_"), Qt::CaseInsensitive) ||
      request.name.contains(QLatin1String("..sp_"))) {
    status = WriteCatalogue(client_, request.name.section(u'.', -1), request.parameters, answer);
  }
  if (!status) {
    QStringList arguments;
    for (const SentParameter& parameter : request.parameters) {
      if (parameter.isDefault) continue;
      const QString name = parameter.name.isEmpty() ? QString() : parameter.name + u'=';
      arguments += name + Literal(parameter.value);
    }
    StatementRunner runner(client_, answer, Answer::Statement::kOfProcedure);
    status = runner.Call(QStringLiteral("EXEC %1 ").arg(request.name) + arguments.join(u','));
  }
  if (status) answer.ReturnStatus(*status);
  int ordinal = 0;
  for (const SentParameter& parameter : request.parameters) {
    if (status && parameter.isOutput) answer.ReturnValue(ordinal, parameter.name, parameter.value);
    ++ordinal;
  }
  answer.End(Answer::Statement::kProcedure, {.more = more, .failed = !status});
}

void Requests::Transaction(ByteReader& in, Answer& answer) {
  const int what = in.U16();
  const auto run = [&](const char* sql) {
    Variables variables;
    return StatementRunner(client_, answer, Answer::Statement::kOfBatch).Run(QLatin1String(sql), variables, false);
  };
  if (what == kBegin) {
    run("BEGIN TRAN");
    return;
  }
  if (what != kCommit && what != kRollback) throw ProtocolError("a transaction request that is not known here");
  in.ShortText();
  const bool beginsAgain = !in.AtEnd() && (in.U8() & 1) != 0;
  const QString end = QLatin1String(what == kCommit ? "COMMIT TRAN" : "ROLLBACK TRAN");
  Variables variables;
  StatementRunner runner(client_, answer, Answer::Statement::kOfBatch);
  runner.Run(beginsAgain ? end + QStringLiteral("; BEGIN TRAN") : end, variables, false);
}

}  // namespace qbx::tds
