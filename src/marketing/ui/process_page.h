// Tab 5: what is going to be produced, and how a run went.

#pragma once

#include <memory>

#include "marketing/ui/wizard_page.h"

namespace Ui {
class ProcessPage;
}

namespace qbx {

/// Shows the counters, and the lines of the results log as they come.
class ProcessPage : public WizardPage {
 public:
  explicit ProcessPage(PageParts parts);
  ~ProcessPage() override;

  void CampaignSetUp() override;
  [[nodiscard]] QWidget* FirstControl() override;

 protected:
  void CopyState() override;

 private:
  std::unique_ptr<Ui::ProcessPage> ui_;
  CreditNeed credits_ = {};
};

}  // namespace qbx
