// Tab 4: the texts of the campaign.

#pragma once

#include <QTimer>
#include <memory>

#include "dispatch/row_survey.h"
#include "marketing/ui/wizard_page.h"
#include "wizard/campaign_texts.h"

namespace Ui {
class TemplatesPage;
}

namespace qbx {

class TemplatePane;

/// Letter, e-mail and text message are written here, each with its notes; they can be taken from another campaign.
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
  /// A text was changed.
  void Edited();
  void LoadLetters();
  void ShowCampaigns();
  [[nodiscard]] bool Connected();
  void Survey();
  void ShowNotes();
  [[nodiscard]] std::array<TemplatePane*, 2> Panes() const;

  std::unique_ptr<Ui::TemplatesPage> ui_;
  std::optional<RowSurvey> survey_;  ///< of the rows and the text as they were last looked at
  bool letterEdited_ = false;        ///< the state lacks it: a long letter takes too long to be written at every key
  QTimer notes_;
};

}  // namespace qbx
