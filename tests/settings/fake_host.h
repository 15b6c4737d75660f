// A host database that answers a few statements with rows that a test lays down.

#pragma once

#include <QHash>
#include <algorithm>

#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "support/fixed_clock.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace qbx::test {

/// The small services, with their log in a folder of the test.
struct TestServices {
  TempFolder folder;
  FixedClock clock;
  ScriptedUi ui;
  LogFile log{clock, folder.File(QStringLiteral("MARKETING.LOG"))};
  StatusBox status{ui};
  ErrorReport errors{log, status, ui};
  Diagnostics diagnostics{clock, log, ui, status, errors};

  [[nodiscard]] QString Log() const {
    return QFile::exists(log.Path()) ? QString::fromUtf8(folder.Read(QStringLiteral("MARKETING.LOG"))) : QString();
  }
};

/// One row: column names and values in order.
struct FakeRow {
  std::vector<std::pair<QString, Value>> fields;
  bool isEmpty = false;  ///< columns without a row

  void Set(const QString& name, const Value& value) {
    const auto found = std::ranges::find(fields, name, [](const auto& field) { return field.first; });
    if (found != fields.end()) {
      found->second = value;
    } else {
      fields.emplace_back(name, value);
    }
  }
  void Remove(const QString& name) {
    std::erase_if(fields, [&](const auto& field) { return field.first == name; });
  }
};

/// Statements (spelt as they must arrive) and their answers; any other fails as a procedure that is missing.
struct FakeHost {
  QHash<QString, FakeRow> answers;
  QStringList executed;
  std::function<void(const QString&)> onExecute;
};

class FakeRowSource final : public RowSource {
 public:
  explicit FakeRowSource(const FakeRow& row) : rowsLeft_(row.isEmpty ? 0 : 1) {
    for (const auto& [name, value] : row.fields) {
      columns_.push_back({.name = name, .type = value.IsNull() ? ValueType::kText : value.Type()});
      values_.push_back(value);
      texts_.push_back(value.ToText().toUtf8());
    }
  }
  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override { return rowsLeft_-- > 0; }
  [[nodiscard]] Cell At(int column) const override {
    const auto i = static_cast<size_t>(column);
    return {.type = values_[i].Type(),
            .integer = values_[i].ToInt(),
            .utf8 = {texts_[i].data(), static_cast<size_t>(texts_[i].size())}};
  }

 private:
  std::vector<Column> columns_;
  std::vector<Value> values_;
  std::vector<QByteArray> texts_;
  int rowsLeft_;
};

class FakeSession final : public Session {
 public:
  explicit FakeSession(FakeHost& host) : host_(host) {}
  std::unique_ptr<RowSource> Execute(const QString& batch) override {
    host_.executed.append(batch);
    if (host_.onExecute) host_.onExecute(batch);
    const auto answer = host_.answers.constFind(batch);
    if (answer != host_.answers.constEnd()) return std::make_unique<FakeRowSource>(*answer);
    const QString text = QStringLiteral("Could not find stored procedure '%1'.").arg(batch);
    throw DatabaseError(2812, text, {{2812, QStringLiteral("42000"), text}});
  }
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<const Parameter>) override {
    return Execute(procedure);
  }
  std::vector<Parameter> DescribeProcedure(const QString&) override { return {Parameter{}}; }
  void Begin() override {}
  void Commit() override {}
  void Rollback() override {}
  [[nodiscard]] bool InTransaction() const override { return false; }
  void DeleteRow(const QString&, const QString&, const Value&) override {}
  void UpdateRow(const QString&, const QString&, const Value&, std::span<const QString>,
                 std::span<const Value>) override {}
  void InsertRow(const QString&, std::span<const QString>, std::span<const Value>) override {}
  void SetCommandTimeout(int) override {}
  [[nodiscard]] bool IsAlive() override { return true; }
  void Interrupt() override {}

 private:
  FakeHost& host_;
};

/// The statement routines over a fake host, connected from the start.
struct HostFixture : TestServices {
  FakeHost host;
  EventContext context;
  LastError lastError;
  Connection connection{
      [this](const ConnectionTarget&, const Login&, int) { return std::make_unique<FakeSession>(host); }};
  EventLog events{connection, context, log};
  ErrorInterpretation interpretation{context, events, lastError, diagnostics};
  Statements statements{connection, interpretation, events, lastError, diagnostics};

  void Connect() { connection.Open(QStringLiteral("Data Source=;Initial Catalog=Garage;"), {}); }
};

}  // namespace qbx::test
