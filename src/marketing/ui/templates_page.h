// Tab 4: the texts of the campaign.

#pragma once

#include <memory>

#include "marketing/ui/wizard_page.h"

namespace Ui {
class TemplatesPage;
}

namespace qbx {

/// E-mail and text message are written here; a letter is kept with its campaign, its editor is still to come.
class TemplatesPage : public WizardPage {
 public:
  explicit TemplatesPage(PageParts parts);
  ~TemplatesPage() override;

  [[nodiscard]] QWidget* FirstControl() override;

 protected:
  void CopyState() override;

 private:
  void Edited(QString& value, const QString& text);
  void LoadLetters();
  void ShowCampaigns();
  void ShowLength();

  std::unique_ptr<Ui::TemplatesPage> ui_;
};

}  // namespace qbx
