// What F1 shows: what a page or window is for, and the keys that work there. The texts stand with the windows.

#pragma once

#include <QDialog>
#include <functional>

class QTextBrowser;

namespace qbx {

struct HelpText {
  QString title;
  QString html;  ///< plain paragraphs and lists; the colours are the palette's
};

/// A small window beside the one that it explains, which goes on working meanwhile. F1 opens it with the keyboard in it; F1 again or Esc
/// closes it and gives the keyboard back. It goes when its owner goes.
class HelpWindow : public QDialog {
 public:
  /// Gives F1 to the owner.
  /// \param text  asked each time it is shown
  HelpWindow(QWidget& owner, std::function<HelpText()> text);

  /// What F1 does, for a menu.
  [[nodiscard]] QAction& Command() { return *command_; }
  /// Another page is shown: so is its text, when the window is open.
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
