// Everything that works on the current campaign, wired over one Application.

#pragma once

#include "dispatch/credit_estimate.h"
#include "dispatch/email_sender.h"
#include "dispatch/mailshot.h"
#include "dispatch/replace_guard.h"
#include "dispatch/results_log.h"
#include "dispatch/sms_gateway.h"
#include "dispatch/test_messages.h"
#include "letters/letter_run.h"
#include "network/mime_message.h"
#include "printing/print_report.h"
#include "queries/process_query.h"
#include "results/counters.h"
#include "results/first_rows.h"
#include "results/flags.h"
#include "results/results_view.h"
#include "startup/application.h"
#include "wizard/campaign_settings.h"
#include "wizard/draft_keeper.h"
#include "wizard/draft_offer.h"
#include "wizard/query_selection.h"
#include "wizard/result_edits.h"
#include "wizard/steps.h"
#include "wizard/wizard_state.h"

namespace qbx {

/// The logic behind one main window, and behind one command of the headless runner. It has no behaviour of its own.
/// Made after the Application was started, because it takes the user from it.
class CampaignDesk {
 public:
  /// \param view  shows an e-mail that is being sent; its plain base class shows nothing
  CampaignDesk(Application& app, SendEmailView& view);
  CampaignDesk(const CampaignDesk&) = delete;
  CampaignDesk& operator=(const CampaignDesk&) = delete;

  // Shared by several of the others.
  ResultsLog resultsLog;
  ReplaceGuard guard;
  RowChanges rowChanges;

  // The wizard.
  WizardState state;
  Counters counters;
  ResultsView results;
  FirstRows firstRows;
  ResultFlags flags;
  ResultEdits edits;
  QuerySelection selection;
  QueryProcessor queries;
  CampaignSettings settings;
  WizardSteps steps;
  Drafts draftFiles;
  DraftKeeper drafts;

  // Sending.
  CreditEstimate estimate;
  MimeWriter mime;
  SmsGateway gateway;
  EmailSender email;

  [[nodiscard]] DraftOffer MakeDraftOffer();
  [[nodiscard]] TestMessages MakeTestMessages();
  /// A run over the current rows; the observer must outlive it.
  [[nodiscard]] Mailshot MakeMailshot(MailshotObserver& observer);
  /// Makes the letters of the current campaign; the report printer and the observer must outlive it.
  [[nodiscard]] LetterRun MakeLetterRun(ReportPrinter& reports, LetterObserver& observer);
  /// Runs reports of the current campaign; the outlet must outlive it.
  [[nodiscard]] ReportPrinter MakeReportPrinter(ReportOutlet& outlet);

 private:
  Application& app_;
};

}  // namespace qbx
