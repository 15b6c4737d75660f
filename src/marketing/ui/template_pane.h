// What the e-mail and the text message on tab 4 have in common.

#pragma once

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

/// A template with its insert menu, its notes and its preview. The Designer form makes it; `Work` gives it what it works with, before anything else.
class TemplatePane : public QWidget {
  Q_OBJECT

 public:
  explicit TemplatePane(QWidget* parent) : QWidget(parent) {}

  void Work(const PageParts& parts, std::shared_ptr<Spelling> spelling);
  /// Copies the state to the controls.
  void ShowState();
  virtual void ShowNotes(const NoteFacts& facts) = 0;
  virtual void HidePreview() = 0;
  /// An open preview shows what the rows, or the templates, have become.
  virtual void FollowRows() = 0;
  virtual void FollowText() = 0;

 Q_SIGNALS:
  /// The user changed the template.
  void Edited();

 protected:
  /// Connects the controls, once.
  virtual void Connect() = 0;
  virtual void CopyState() = 0;
  /// Stores what the user typed.
  void Store(QString& value, const QString& text);
  [[nodiscard]] bool Showing() const { return showing_; }
  [[nodiscard]] Application& App() const { return parts_->app; }
  [[nodiscard]] WizardState& State() const { return parts_->desk.state; }
  void Run(const std::function<void()>& command) { parts_->run(command); }
  void Guarded(const std::function<void()>& command) { parts_->guarded(command); }
  /// Makes messages of the templates as they stand.
  [[nodiscard]] MessageMaker Messages() const;
  [[nodiscard]] TestMessages Tests() const { return parts_->desk.MakeTestMessages(); }
  [[nodiscard]] const std::shared_ptr<Spelling>& SpellingToUse() const { return spelling_; }
  /// One sentence after the other; a label without any is not there.
  static void ShowSentences(QLabel& label, const QStringList& sentences);

 private:
  std::optional<PageParts> parts_;
  std::shared_ptr<Spelling> spelling_;
  bool showing_ = false;
};

}  // namespace qbx
