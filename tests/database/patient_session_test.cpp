#include "database/patient_session.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "database/fake_server.h"
#include "database/recordset.h"
#include "database/session_wrapper.h"

namespace qbx::test {
namespace {

/// Answers a statement "wait" only after events were let run three times, as a server that is slow to answer.
class SlowServer {
 public:
  std::atomic<int> pumps = 0;

  SessionFactory Sessions() {
    return [this, inner = server_.Factory()](const ConnectionTarget& target, const Login& login, int timeout) {
      return std::make_unique<SlowSession>(inner(target, login, timeout), pumps);
    };
  }
  FakeServer& Script() { return server_; }

 private:
  /// Each row behind the first hundred comes after three more pumps.
  class SlowRows final : public RowSource {
   public:
    SlowRows(std::unique_ptr<RowSource> inner, std::atomic<int>& pumps) : inner_(std::move(inner)), pumps_(pumps) {}
    const std::vector<Column>& Columns() const override { return inner_->Columns(); }
    bool Next() override {
      for (const int enough = pumps_ + 3; count_++ >= 100 && pumps_ < enough;)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      return inner_->Next();
    }
    Cell At(int column) const override { return inner_->At(column); }

   private:
    std::unique_ptr<RowSource> inner_;
    std::atomic<int>& pumps_;
    int count_ = 0;
  };
  class SlowSession final : public SessionWrapper {
   public:
    SlowSession(std::unique_ptr<Session> inner, std::atomic<int>& pumps)
        : SessionWrapper(std::move(inner)), pumps_(pumps) {}
    std::unique_ptr<RowSource> Execute(const QString& batch) override {
      constexpr int kEnough = 3;
      while (batch.startsWith("wait") && pumps_ < kEnough)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      std::unique_ptr<RowSource> rows = SessionWrapper::Execute(batch);
      if (rows) rows = std::make_unique<SlowRows>(std::move(rows), pumps_);
      return rows;
    }

   protected:
    void Ask(const std::function<void()>& call) override { call(); }

   private:
    std::atomic<int>& pumps_;
  };

  FakeServer server_;
};

/// Sessions whose waits let `pump` run.
std::unique_ptr<Session> Open(SlowServer& server, std::function<void()> pump = {}) {
  auto wait = [&server, pump = std::move(pump)](std::chrono::milliseconds) {
    ++server.pumps;
    if (pump) pump();
    return true;
  };
  return PatientSessions(server.Sessions(), [wait = std::move(wait)](MayCancel) -> WaitForServer { return wait; })(
      {}, {}, 5);
}

TEST(PatientSession, LetsEventsRunWhileTheServerIsSlow) {
  SlowServer server;
  const std::unique_ptr<Session> session = Open(server);
  (void)session->Execute("wait for it");
  EXPECT_GE(server.pumps, 3);
  EXPECT_EQ(server.Script().Count("wait for it"), 1);
  server.Script().Expect("rows", Rows({{.name = "n"}}, std::vector<std::vector<Value>>(102, {Value(1)})));
  EXPECT_EQ(Recordset::ReadAll(session->Execute("rows")).RecordCount(), 102) << "events run while rows are read, too";
}

TEST(PatientSession, HandsFailuresToTheCallerAndGoesOn) {
  SlowServer server;
  const std::unique_ptr<Session> session = Open(server);
  server.Script().Expect("bad", Failure("no such table"));
  EXPECT_THROW((void)session->Execute("wait, bad"), DatabaseError);
  EXPECT_NO_THROW((void)session->Execute("good"));
}

TEST(PatientSession, RefusesACallThatComesWhileAnotherIsWaitedFor) {
  SlowServer server;
  std::unique_ptr<Session> session;
  const auto pump = [&] {
    if (session) {
      EXPECT_THROW((void)session->Execute("meanwhile"), DatabaseError);
    }
  };
  session = Open(server, pump);
  (void)session->Execute("wait for it");
  EXPECT_EQ(server.Script().calls.last(), "wait for it");
  EXPECT_EQ(server.Script().Count("meanwhile"), 0);
}

TEST(PatientSession, ACallThatIsNotAnsweredEvenWhenItIsCancelledIsLeftToItselfAndTheSessionIsLost) {
  SlowServer server;
  bool cancelled = false;
  const SessionFactory sessions = PatientSessions(server.Sessions(), [&](MayCancel mayCancel) {
    return [&, mayCancel](std::chrono::milliseconds) { return !cancelled || mayCancel == MayCancel::kNo; };
  });
  const std::unique_ptr<Session> session = sessions({}, {}, 5);
  cancelled = true;
  try {
    (void)session->Execute("wait for ever");
    FAIL() << "it returned before the server answered";
  } catch (const DatabaseError& error) {
    EXPECT_TRUE(error.ConnectionLost());
  }
  EXPECT_FALSE(session->IsAlive());
  EXPECT_THROW(session->Begin(), DatabaseError);
  server.pumps = 3;  // the call ends, and with it the helper
}

TEST(PatientSession, AnotherThreadGoesStraightThrough) {
  SlowServer server;
  const std::unique_ptr<Session> session = Open(server);
  server.pumps = 3;
  std::thread([&session] { (void)session->Execute("wait no longer"); }).join();
  EXPECT_EQ(server.pumps, 3);
  EXPECT_EQ(server.Script().Count("wait no longer"), 1);
}

}  // namespace
}  // namespace qbx::test
