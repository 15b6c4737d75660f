// What the e-mail and the text message on tab 4 have in common.

#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>
#include <optional>

#include "dispatch/message_maker.h"
#include "dispatch/template_notes.h"
#include "dispatch/test_messages.h"
#include "marketing/ui/spelling.h"
#include "marketing/ui/wizard_page.h"

class QLabel;

namespace qbx {

/// A template with its insert menu, notes and preview. The Designer form makes it. Call `Work` first; it gives the pane
/// what it works with.
class TemplatePane : public QWidget {
  Q_OBJECT

 public:
  explicit TemplatePane(QWidget* parent) : QWidget(parent) {}

  void Work(const PageParts& parts, std::shared_ptr<Spelling> spelling);
  /// Copies the state to the controls.
  void ShowState();
  virtual void ShowNotes(const NoteFacts& facts) = 0;
  virtual void HidePreview() = 0;
  /// The rows or the templates have changed: updates an open preview.
  virtual void FollowRows() = 0;
  virtual void FollowText() = 0;

 Q_SIGNALS:
  /// Called when the user changed the template.
  void Edited();

 protected:
  /// Connects the controls, once.
  virtual void Connect() = 0;
  virtual void CopyState() = 0;
  /// Stores the text that the user typed.
  void Store(QString& value, const QString& text);
  [[nodiscard]] bool Showing() const { return showing_; }
  [[nodiscard]] Application& App() const { return parts_->app; }
  [[nodiscard]] WizardState& State() const { return parts_->desk.state; }
  void Run(const std::function<void()>& command) { parts_->run(command); }
  void Guarded(const std::function<void()>& command) { parts_->guarded(command); }
  /// Makes messages from the present templates.
  [[nodiscard]] MessageMaker Messages() const;
  [[nodiscard]] TestMessages Tests() const { return parts_->desk.MakeTestMessages(); }
  [[nodiscard]] const std::shared_ptr<Spelling>& SpellingToUse() const { return spelling_; }
  /// Shows sentences one after the other; a label without any is hidden.
  static void ShowSentences(QLabel& label, const QStringList& sentences);

 private:
  std::optional<PageParts> parts_;
  std::shared_ptr<Spelling> spelling_;
  bool showing_ = false;
};

}  // namespace qbx
