// The help of F1: what a page or window is for, and which keys work there. The texts are beside the windows.

#pragma once

#include <QAction>
#include <QDialog>
#include <QEvent>
#include <QObject>
#include <QString>
#include <QWidget>
#include <functional>

class QTextBrowser;

namespace qbx {

struct HelpText {
  QString title;
  QString html;  ///< plain paragraphs and lists, in the colours of the palette
};

/// A small window beside the one that it explains, which stays usable. F1 opens it and gives it the focus; F1 again or
/// Esc closes it and returns the focus. It is deleted with its owner.
class HelpWindow : public QDialog {
 public:
  /// Makes F1 open the help in the owner.
  /// \param text  asked each time the help is shown
  HelpWindow(QWidget& owner, std::function<HelpText()> text);

  /// The action of F1, for a menu.
  [[nodiscard]] QAction& Command() { return *command_; }
  /// Another page is shown: updates the text if the window is open.
  void ShowText();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void done(int result) override;

 private:
  void OpenBeside();
  void Place();

  QWidget& owner_;
  std::function<HelpText()> text_;
  QTextBrowser* txtHelp_;
  QAction* command_;
};

}  // namespace qbx
