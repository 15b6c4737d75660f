// Tab 4: the texts of the campaign.

#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

#include "dispatch/row_survey.h"
#include "marketing/ui/wizard_page.h"
#include "wizard/campaign_texts.h"

namespace Ui {
class TemplatesPage;
}

namespace qbx {

class TemplatePane;

/// The pages for letter, e-mail and text message, each with its notes. The texts can be copied from another campaign.
class TemplatesPage : public WizardPage {
 public:
  explicit TemplatesPage(const PageParts& parts);
  ~TemplatesPage() override;

  [[nodiscard]] QWidget* FirstControl() override;
  void CampaignSetUp() override;
  void KeepEdits() override;
  /// Opens the tab of a text.
  void ShowText(TextKind kind);

 protected:
  void CopyState() override;

 private:
  void ShowExamples();
  /// Called when a text was changed.
  void Edited();
  void LoadLetters();
  void ShowCampaigns();
  [[nodiscard]] bool Connected();
  void Survey();
  void ShowNotes();
  [[nodiscard]] std::array<TemplatePane*, 2> Panes() const;

  std::unique_ptr<Ui::TemplatesPage> ui_;
  std::optional<RowSurvey> survey_;  ///< of the rows and the text at the last survey
  /// The state lacks the edit, because writing a long letter at every key would take too long.
  bool letterEdited_ = false;
  QTimer notes_;
};

}  // namespace qbx
