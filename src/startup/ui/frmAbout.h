// The about box, which is the splash while the program starts.

#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmAbout;
}

namespace qbx {

class Application;
class WindowLayout;

/// Version, computer, database and server. A double-click on the server's line (or Enter on it) tells about the database service.
class frmAbout : public QDialog {
 public:
  explicit frmAbout(Application& app, QWidget* parent = nullptr);
  ~frmAbout() override;

  /// Shows it without a frame or buttons until it is deleted; only what is known so early is shown. It never takes the keyboard.
  void ShowSplash();
  /// Shows the connection modally; returns when it is closed.
  void ShowForm(WindowLayout& layout);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FillIn();

  Application& app_;
  std::unique_ptr<Ui::frmAbout> ui_;
};

}  // namespace qbx
