#include "marketing/program.h"

#include "database/patient_session.h"
#include "desk/campaign_desk.h"
#include "dispatch/ui/frmSendEmail.h"
#include "marketing/ui/frmMain.h"
#include "platform/ui/widget_ui.h"
#include "settings/ui/window_layout.h"
#include "startup/ui/frmAbout.h"

namespace qbx {

namespace {

/// Keeps windows alive while the server is slow to answer.
ApplicationSetup WithPatience(ApplicationSetup setup, BeginWaiting begin) {
  const auto inner = setup.wrapSessions;
  setup.wrapSessions = [inner, begin = std::move(begin)](SessionFactory sessions) {
    return PatientSessions(inner ? inner(std::move(sessions)) : std::move(sessions), begin);
  };
  return setup;
}

}  // namespace

MarketingProgram::MarketingProgram(WidgetUi& ui, const ApplicationSetup& setup)
    : ui_(ui),
      app_(WithPatience(setup, [this](MayCancel mayCancel) { return app_.statements.BeginWaiting(mayCancel); })),
      layout_(std::make_unique<WindowLayout>(app_.registry)) {
  ui_.SetWindowMemory(
      {.restore = [this](QWidget& window, const QString& form) { layout_->RestoreWindow(window, form); },
       .keep = [this](const QWidget& window, const QString& form) { layout_->SaveWindow(window, form); }});
}

MarketingProgram::~MarketingProgram() {
  ui_.SetMainWindow(nullptr);
  ui_.SetWindowMemory({});
}

StartOutcome MarketingProgram::Start(const QString& commandLine) {
  const StartOutcome outcome = app_.start.Run(commandLine, {.showSplash =
                                                                [this] {
                                                                  splash_ = std::make_unique<frmAbout>(app_);
                                                                  splash_->ShowSplash();
                                                                },
                                                            .openWindows = [this] { OpenWindows(); },
                                                            .closeSplash = [this] { splash_.reset(); }});
  if (outcome == StartOutcome::kRunning) window_->OfferDraft();
  return outcome;
}

void MarketingProgram::OpenWindows() {
  emailWindow_ = std::make_unique<frmSendEmail>();
  desk_ = std::make_unique<CampaignDesk>(app_, *emailWindow_);
  window_ = std::make_unique<frmMain>(app_, *desk_, ui_, *layout_);
  ui_.SetMainWindow(window_.get());
  window_->show();
}

}  // namespace qbx
