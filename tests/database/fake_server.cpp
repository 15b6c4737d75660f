#include "database/fake_server.h"

#include <algorithm>

namespace qbx::test {

namespace {

class FakeRows final : public RowSource {
 public:
  explicit FakeRows(Answer answer) : answer_(std::move(answer)) {}

  [[nodiscard]] const std::vector<Column>& Columns() const override { return answer_.columns; }
  bool Next() override { return ++row_ < static_cast<int>(answer_.rows.size()); }
  [[nodiscard]] Cell At(int column) const override {
    const Value& value = answer_.rows[static_cast<std::size_t>(row_)][static_cast<std::size_t>(column)];
    text_ = value.ToText().toUtf8();
    return {.type = value.Type(),
            .integer = value.ToInt(),
            .real = value.ToDouble(),
            .utf8 = {text_.constData(), static_cast<std::size_t>(text_.size())}};
  }

 private:
  Answer answer_;
  int row_ = -1;
  mutable QByteArray text_;
};

class FakeSession final : public Session {
 public:
  explicit FakeSession(FakeServer& server) : server_(server) {}

  std::unique_ptr<RowSource> Execute(const QString& batch) override { return server_.Reply(batch); }
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override {
    QString call = QString("call ") + procedure;
    for (const Parameter& each : parameters) {
      if (each.isSet) call += u' ' + each.name + u'=' + each.value.ToText();
    }
    return server_.Reply(call);
  }
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString&) override {
    if (server_.describeError) throw *server_.describeError;
    return server_.parameters;
  }
  void Begin() override { ++depth_; }
  void Commit() override { --depth_; }
  void Rollback() override { depth_ = 0; }
  [[nodiscard]] bool InTransaction() const override { return depth_ > 0; }
  void DeleteRow(const QString&, const QString&, const Value&) override {}
  void UpdateRow(const QString&, const QString&, const Value&, std::span<const QString>,
                 std::span<const Value>) override {}
  void InsertRow(const QString&, std::span<const QString>, std::span<const Value>) override {}
  void SetCommandTimeout(int) override {}
  [[nodiscard]] bool IsAlive() override { return true; }
  void Interrupt() override {}

 private:
  FakeServer& server_;
  int depth_ = 0;
};

}  // namespace

Answer Rows(std::vector<Column> columns, std::vector<std::vector<Value>> rows) {
  return {.columns = std::move(columns), .rows = std::move(rows), .error = {}};
}

Answer Single(const Value& value) {
  return Rows({{.name = "Value", .type = value.Type()}}, {{value}});
}

Answer Failure(const QString& description, int number) {
  return {.columns = {}, .rows = {}, .error = DatabaseError(number, description, {{number, {}, description}})};
}

Answer Lost() {
  return Failure("The connection is broken", kUnspecifiedError);
}

SessionFactory FakeServer::Factory() {
  return [this](const ConnectionTarget& target, const Login& login, int timeout) -> std::unique_ptr<Session> {
    calls.append(QString("open %1 %2/%3 %4").arg(target.database, login.user, login.password).arg(timeout));
    if (!opens.empty()) {
      const std::optional<DatabaseError> error = opens.front();
      opens.pop_front();
      if (error) throw *error;
    }
    return std::make_unique<FakeSession>(*this);
  };
}

std::unique_ptr<RowSource> FakeServer::Reply(const QString& call) {
  calls.append(call);
  const auto found = std::find_if(answers_.begin(), answers_.end(),
                                  [&call](const Expected& expected) { return call.contains(expected.part); });
  if (found == answers_.end()) return nullptr;
  Answer answer = std::move(found->answer);
  answers_.erase(found);
  if (answer.error) throw *answer.error;
  if (answer.columns.empty()) return nullptr;
  return std::make_unique<FakeRows>(std::move(answer));
}

}  // namespace qbx::test
