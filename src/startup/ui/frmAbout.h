// The about box, which is also the splash of the start.

#pragma once

#include <QDialog>
#include <QEvent>
#include <QObject>
#include <QWidget>
#include <memory>

namespace Ui {
class frmAbout;
}

namespace qbx {

class Application;
class WindowLayout;

/// Shows version, computer, database and server. A double-click or Enter on the server's line shows the database
/// service.
class frmAbout : public QDialog {
 public:
  explicit frmAbout(Application& app, QWidget* parent = nullptr);
  ~frmAbout() override;

  /// Shows the box without frame and buttons until it is deleted, with what is known so early. It never takes the
  /// focus.
  void ShowSplash();
  /// Shows the box modally, with the connection; returns when it is closed.
  void ShowForm(WindowLayout& layout);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FillIn();

  Application& app_;
  std::unique_ptr<Ui::frmAbout> ui_;
};

}  // namespace qbx
