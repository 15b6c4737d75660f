// Tab 5: what is going to be produced, sending it, and how a run went.

#pragma once

#include <memory>

#include "dispatch/settle_doubt.h"
#include "marketing/ui/wizard_page.h"

namespace Ui {
class ProcessPage;
}

namespace qbx {

/// Starts and pauses the mailshot, shows its progress and the lines of the results log as they come, and what needs a person afterwards. When a
/// campaign is loaded, the log of its last run on this computer stands there.
class ProcessPage : public WizardPage {
 public:
  explicit ProcessPage(PageParts parts);
  ~ProcessPage() override;

  void CampaignSetUp() override;
  [[nodiscard]] QWidget* FirstControl() override;

 protected:
  void CopyState() override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void GenerateLetters();
  void SendMailshots();
  void ShowCounters();
  void ShowTroubles();
  void ShowLetterCounts();
  void ShowShared();
  void ShowWhoGetsWhat();
  void FitChart();
  void ShowLastRun();
  /// Brings the newest line into sight.
  void ShowEndOfLog();
  void Settle(const std::set<qint64>& rows, DoubtOutcome outcome);
  void SaveLog();

  std::unique_ptr<Ui::ProcessPage> ui_;
  int listener_;
  bool showsRun_ = false;  ///< a run view shows the lines
  CreditNeed credits_ = {};
  bool hasRows_ = false;
  Mailshot* running_ = nullptr;
};

}  // namespace qbx
