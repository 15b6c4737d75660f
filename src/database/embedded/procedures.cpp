// Runs stored procedures of the embedded databases.

#include "database/embedded/procedures.h"

#include <sqlite3.h>

#include "database/embedded/errors.h"
#include "database/embedded/rows.h"
#include "database/embedded/translator.h"
#include "database/kept_rows.h"

namespace qbx {
namespace {

std::string_view TextOf(Tokens statement) {
  const char* begin = statement.front().text.data();
  const char* end = statement.back().text.data() + statement.back().text.size();
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

StoredProcedure::StoredProcedure(const std::shared_ptr<SqliteDatabase>& database, ProcedureHeader header,
                                 std::string_view body)
    : database_(database), header_(std::move(header)) {
  std::vector<Token> tokens;
  Tokenize(body, tokens);
  for (const Tokens statement : SplitStatements(tokens)) {
    BodyStatement& added = body_.emplace_back();
    added.sql = TextOf(statement);
    try {
      Prepare(added);
      writes_ = writes_ || !added.prepared->IsReadOnly();
    } catch (const DatabaseError&) {
      // It may need a table that an earlier statement makes. Its error is reported when it runs.
      added.prepared.reset();
      writes_ = true;
    }
  }
}

void StoredProcedure::Prepare(BodyStatement& statement) {
  auto prepared = std::make_shared<PreparedStatement>(database_, statement.sql);
  statement.bindings.clear();
  for (int i = 1; i <= sqlite3_bind_parameter_count(prepared->Handle()); ++i) {
    const QString name = QString::fromUtf8(sqlite3_bind_parameter_name(prepared->Handle(), i));
    int found = -1;
    for (std::size_t p = 0; p < header_.parameters.size(); ++p) {
      if (header_.parameters[p].name.compare(name, Qt::CaseInsensitive) == 0) found = static_cast<int>(p);
    }
    if (found < 0) throw ServerError(137, QStringLiteral("Must declare the scalar variable '%1'.").arg(name));
    statement.bindings.push_back(found);
  }
  statement.prepared = std::move(prepared);
}

StatementLease StoredProcedure::Bind(BodyStatement& statement, const std::vector<Value>& values) {
  if (!statement.prepared) Prepare(statement);
  StatementLease lease(statement.prepared);
  for (std::size_t i = 0; i < statement.bindings.size(); ++i) {
    lease.Bind(static_cast<int>(i) + 1, values[static_cast<std::size_t>(statement.bindings[i])]);
  }
  return lease;
}

std::unique_ptr<RowSource> StoredProcedure::Run(const std::vector<Value>& values) {
  std::unique_ptr<RowSource> result;
  for (std::size_t i = 0; i < body_.size(); ++i) {
    StatementLease lease = Bind(body_[i], values);
    const bool hasColumns = lease->HasColumns();
    const bool lazy = i + 1 == body_.size() && lease->IsReadOnly();
    const bool atRow = lease.Step();
    if (!hasColumns) continue;
    result = std::make_unique<SqliteRows>(std::move(lease), true, atRow);
    if (!lazy) result = std::make_unique<KeptRows>(*result);
  }
  return result;
}

std::shared_ptr<StoredProcedure> ProcedureCatalogue::Find(const QString& name) {
  if (const auto known = known_.constFind(name); known != known_.constEnd()) return *known;
  std::shared_ptr<StoredProcedure> procedure = Load(name.section(QLatin1Char('.'), -1));
  known_.insert(name, procedure);
  return procedure;
}

std::shared_ptr<StoredProcedure> ProcedureCatalogue::Load(const QString& name) {
  const auto missing = [&name] {
    return ServerError(2812, QStringLiteral("Could not find stored procedure '%1'.").arg(name));
  };
  QByteArray header;
  QByteArray body;
  try {
    SqliteStatement find(database_->Handle(), "SELECT Header, Body FROM _Procedures WHERE Name = ?1 COLLATE NOCASE");
    if (!find.Add(name.toStdString()).Step()) throw missing();
    header = find.TextAt(0);
    body = find.TextAt(1);
  } catch (const SqliteFailure& failure) {
    DatabaseError error = database_->Error(failure);
    // A database without the table has no procedures. A damaged or locked one fails in its own way.
    if (!error.Errors().empty() && error.Errors().front().number == 208) throw missing();
    throw error;
  }
  return std::make_shared<StoredProcedure>(
      database_, ParseProcedureHeader({header.constData(), static_cast<std::size_t>(header.size())}),
      std::string_view(body.constData(), static_cast<std::size_t>(body.size())));
}

}  // namespace qbx
