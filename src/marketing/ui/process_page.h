// Tab 5: what will be produced, sending it, and the result of a run.

#pragma once

#include <QResizeEvent>
#include <QWidget>
#include <memory>

#include "dispatch/settle_doubt.h"
#include "marketing/ui/wizard_page.h"

namespace Ui {
class ProcessPage;
}

namespace qbx {

/// Starts and pauses the mailshot. Shows its progress, the lines of the results log as they come, and afterwards what
/// needs a person. When a campaign is loaded, the log of its last run on this computer is shown.
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
  [[nodiscard]] bool CampaignIsThere();
  void GenerateLetters();
  void SendMailshots();
  void ShowCounters();
  void ShowTroubles();
  void ShowLetterCounts();
  void ShowShared();
  void ShowWhoGetsWhat();
  void FitChart();
  void ShowLastRun();
  /// Scrolls to the newest line.
  void ShowEndOfLog();
  void Settle(const std::set<qint64>& rows, DoubtOutcome outcome);
  void SaveLog();

  std::unique_ptr<Ui::ProcessPage> ui_;
  int listener_;
  bool showsRun_ = false;  ///< whether a run view shows the lines
  CreditNeed credits_ = {};
  bool hasRows_ = false;
  Mailshot* running_ = nullptr;
};

}  // namespace qbx
