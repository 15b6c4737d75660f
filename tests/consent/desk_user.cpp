#include "consent/desk_user.h"

namespace qbx::consent {
namespace {

constexpr qint64 kFirstProcess = 4711;

qint64 NewProcess(Surroundings& surroundings) {
  static_assert(sizeof(qint64) == 8);
  qint64 process = kFirstProcess;
  while (surroundings.processes.contains(process))
    ++process;
  surroundings.processes[process] = 1000 + process;
  return process;
}

}  // namespace

DeskUser::DeskUser(Surroundings& surroundings, Story& story, const QString& user, const QString& computer)
    : surroundings_(surroundings),
      user_(user),
      process_(NewProcess(surroundings)),
      computer_(surroundings, computer, process_),
      served_(surroundings.folder, surroundings.clock),
      ui(story),
      app({.ui = ui,
           .clock = surroundings.clock,
           .folders = {surroundings.folder + u'/', surroundings.folder + QStringLiteral("/registry")},
           .host = &computer_,
           .registry = &registry_,
           .services = &services_,
           .shell = &shell_,
           .http = surroundings.gateway,
           .mail = surroundings.mail,
           .wrapSessions = [this](SessionFactory factory) { return Fused(served_.Wrap(std::move(factory))); }}) {
  fuse.burnt = [this] { Die(); };
  const StartOutcome outcome = app.start.RunHeadless({.user = user, .databaseName = {}, .instance = {}});
  if (outcome != StartOutcome::kRunning || !app.hostConnection.Ready())
    story.Fault(QStringLiteral("the program did not start: ") + ui.lastMessage);
  desk = std::make_unique<CampaignDesk>(app, view_);
}

DeskUser::~DeskUser() {
  Die();
}

SessionFactory DeskUser::Fused(SessionFactory factory) {
  return [this, factory = std::move(factory)](const ConnectionTarget& target, const Login& login, int seconds) {
    return std::make_unique<FusedSession>(factory(target, login, seconds), fuse);
  };
}

void DeskUser::Die() {
  computer_.Die();
  // The number stays in use, without a process.
  surroundings_.processes[process_] = 0;
}

bool DeskUser::StepOne(const QueryPlan& plan) {
  desk->steps.StartNewCampaign();
  desk->selection.NodeClick(plan.query);
  desk->state.options = plan.options;
  desk->selection.IncludeOptedOutClick(plan.filters.chkIncludeOptedOut);
  return desk->steps.NextStep(0).Moved();
}

bool DeskUser::RefreshStepTwo(const QueryPlan& plan) {
  const bool optedOut = desk->state.filters.chkIncludeOptedOut;
  desk->state.filters = plan.filters;
  desk->state.filters.chkIncludeOptedOut = optedOut;
  return desk->steps.Refresh();
}

bool DeskUser::StepTwo(const QueryPlan& plan) {
  const bool optedOut = desk->state.filters.chkIncludeOptedOut;
  desk->state.filters = plan.filters;
  desk->state.filters.chkIncludeOptedOut = optedOut;
  return desk->steps.NextStep(1).Moved() && desk->steps.NextStep(2).Moved();
}

bool DeskUser::Save(const QString& name, const MailshotTemplates& templates) {
  desk->state.txtSMS = templates.sms;
  desk->state.txtEmailSubject = templates.emailSubject;
  desk->state.txtEmailBody = templates.emailBody;
  app.campaign.record.Campaign_Name = name;
  return desk->settings.SaveCampaignSettings([this] { app.campaignStorage.SaveCampaign(); });
}

bool DeskUser::Load(int campaign) {
  return desk->settings.LoadCampaignSettings([&] { return app.campaignStorage.LoadCampaign(campaign) ? campaign : 0; });
}

}  // namespace qbx::consent
