#include "desk/campaign_desk.h"

namespace qbx {

CampaignDesk::CampaignDesk(Application& app, SendEmailView& view)
    : resultsLog(app.clock, app.ui),
      guard(app.connection, app.host, app.diagnostics),
      rowChanges(app.connection, guard),
      counters(app.statements),
      results(app.statements, counters, app.diagnostics),
      firstRows(app.statements),
      flags(app.statements, results, app.diagnostics),
      edits({.statements = app.statements,
             .campaign = app.campaign,
             .guard = guard,
             .changes = rowChanges,
             .flags = flags,
             .results = results,
             .options = app.options,
             .loadOptions = [&app] { app.optionsLoader.LoadOptions(); }},
            app.diagnostics),
      selection(app.statements, app.campaign, state, app.options, app.startup.edition, app.diagnostics),
      queries(app.statements, app.options, app.startup.user, app.campaign, state.options, state.filters,
              state.lblRecords, state.leftOut, app.diagnostics),
      settings(app.statements, app.campaign, state, selection, results, app.diagnostics),
      steps({.campaign = app.campaign,
             .state = state,
             .storage = app.campaignStorage,
             .settings = settings,
             .queries = queries,
             .results = results,
             .firstRows = firstRows,
             .counters = counters,
             .estimate = estimate,
             .events = app.events,
             .guard = guard,
             .resultsLog = resultsLog,
             .options = app.options,
             .edition = app.startup.edition,
             .loadOptions = [&app] { app.optionsLoader.LoadOptions(); }},
            app.diagnostics),
      draftFiles(app.startup, app.host, app.log),
      drafts(state, app.campaign, draftFiles, app.diagnostics),
      estimate(app.statements, app.diagnostics),
      mime(app.clock),
      gateway(app.http, app.options, app.service, app.connection, app.events, resultsLog, app.dispatch, app.diagnostics,
              app.startup.user),
      email(app.mail, mime, app.options, app.service, app.connection, app.events, app.dispatch, app.lastError, view,
            app.diagnostics),
      app_(app) {
  results.OnRead([this] { estimate.Invalidate(); });
}

DraftOffer CampaignDesk::MakeDraftOffer() {
  return DraftOffer({.drafts = draftFiles,
                     .keeper = drafts,
                     .statements = app_.statements,
                     .storage = app_.campaignStorage,
                     .campaign = app_.campaign,
                     .state = state,
                     .settings = settings,
                     .steps = steps},
                    app_.diagnostics);
}

TestMessages CampaignDesk::MakeTestMessages() {
  return {email, gateway, app_.options, app_.lastError, app_.diagnostics};
}

LetterRun CampaignDesk::MakeLetterRun(ReportPrinter& reports, LetterObserver& observer) {
  return LetterRun({.statements = app_.statements,
                    .events = app_.events,
                    .resultsLog = resultsLog,
                    .counters = counters,
                    .reports = reports,
                    .options = app_.options,
                    .startup = app_.startup,
                    .host = app_.host,
                    .diagnostics = app_.diagnostics},
                   observer);
}

ReportPrinter CampaignDesk::MakeReportPrinter(ReportOutlet& outlet) {
  return ReportPrinter({.startup = app_.startup,
                        .options = app_.options,
                        .userOptions = app_.userOptions,
                        .campaign = app_.campaign,
                        .connection = app_.connection,
                        .events = app_.events,
                        .diagnostics = app_.diagnostics,
                        .outlet = outlet});
}

Mailshot CampaignDesk::MakeMailshot(MailshotObserver& observer) {
  return Mailshot({.statements = app_.statements,
                   .events = app_.events,
                   .gateway = gateway,
                   .email = email,
                   .resultsLog = resultsLog,
                   .counters = counters,
                   .estimate = estimate,
                   .state = app_.dispatch,
                   .lastError = app_.lastError,
                   .options = app_.options,
                   .service = app_.service,
                   .host = app_.host,
                   .diagnostics = app_.diagnostics,
                   .user = app_.startup.user},
                  observer);
}

}  // namespace qbx
