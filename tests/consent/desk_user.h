// A user at a desk: the whole program without its windows, on the garage's database.

#pragma once

#include <memory>

#include "consent/fuse.h"
#include "consent/query_plan.h"
#include "consent/round_ui.h"
#include "desk/campaign_desk.h"
#include "startup/application.h"
#include "support/fakes.h"
#include "support/fixed_clock.h"
#include "support/memory_registry_store.h"
#include "support/wire/server_under_test.h"

namespace qbx::consent {

/// What every desk of a garage shares.
struct Surroundings {
  QString folder;  ///< of the program, with the database
  test::FixedClock clock = {};
  QHash<qint64, qint64> processes = {};  ///< the running ones; start times by number
  HttpClient* gateway = nullptr;
  MailTransport* mail = nullptr;
};

/// A computer of the garage. Its processes are `Surroundings::processes`.
class Computer final : public HostInfo {
 public:
  Computer(const Surroundings& surroundings, QString name, qint64 process)
      : surroundings_(surroundings), name_(std::move(name)), process_(process) {}
  [[nodiscard]] QString ComputerName() const override { return name_; }
  [[nodiscard]] qint64 ProcessId() const override { return process_; }
  [[nodiscard]] qint64 ProcessStart(qint64 id) const override { return surroundings_.processes.value(id, 0); }
  /// Ends the process. Destructors that run afterwards change nothing.
  void Die() { process_ = -1; }

 private:
  const Surroundings& surroundings_;
  QString name_;
  qint64 process_;
};

/// One process, from its start to its end.
class DeskUser {
 public:
  DeskUser(Surroundings& surroundings, Story& story, const QString& user, const QString& computer);
  ~DeskUser();
  DeskUser(const DeskUser&) = delete;
  DeskUser& operator=(const DeskUser&) = delete;

  /// Ends like a crash. Afterwards only the destructor may be called.
  void Die();
  [[nodiscard]] const QString& User() const { return user_; }

  /// Does a step as a click does. \return whether the program did the step
  bool StepOne(const QueryPlan& plan);
  bool StepTwo(const QueryPlan& plan);
  bool RefreshStepTwo(const QueryPlan& plan);
  /// Presses "Next >" of step 3, enters the templates, and saves the campaign under a name.
  bool Save(const QString& name, const MailshotTemplates& templates);
  bool Load(int campaign);
  [[nodiscard]] int Campaign() const { return app.campaign.record.ID; }

 private:
  [[nodiscard]] SessionFactory Fused(SessionFactory factory);

  Surroundings& surroundings_;
  QString user_;
  qint64 process_;
  test::MemoryRegistryStore registry_;
  test::FakeServices services_;
  test::FakeShell shell_;
  SendEmailView view_;
  Computer computer_;
  test::ServedFolder served_;

 public:
  RoundUi ui;
  Fuse fuse;
  Application app;
  std::unique_ptr<CampaignDesk> desk;  ///< made after the start of the application
};

}  // namespace qbx::consent
