// The text message of tab 4.

#pragma once

#include <QWidget>
#include <memory>

#include "marketing/ui/template_pane.h"

namespace Ui {
class TextPane;
}

namespace qbx {

/// The text with its counter, previewed as a phone shows it. The shown message can be sent as a test. Typing stops at
/// the maximum length; a longer text that was loaded is kept.
class TextPane : public TemplatePane {
  Q_OBJECT

 public:
  explicit TextPane(QWidget* parent = nullptr);
  ~TextPane() override;

  void ShowNotes(const NoteFacts& facts) override;
  void HidePreview() override;
  void FollowRows() override;
  void FollowText() override;

 protected:
  void Connect() override;
  void CopyState() override;

 private:
  void TakeText();
  void Preview();
  void ShowMessage();

  std::unique_ptr<Ui::TextPane> ui_;
};

}  // namespace qbx
