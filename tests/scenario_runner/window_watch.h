// Message boxes, input boxes and other modal windows that open while the scenario's command has not returned.

#pragma once

#include <QObject>
#include <QVariantList>

#include "bridge.h"

class QFileDialog;
class QMenu;
class QMessageBox;
class QWidget;

namespace qbx::scenario {

/// Sees every window of the program open. What must be answered before the program goes on is handed to the scenario,
/// from inside the loop in which the program waits, and the answer is given by pressing the window's own buttons.
/// Whatever the scenario does not deal with is closed, so that the scenario always comes to its end.
class WindowWatch : public QObject {
  Q_OBJECT
 public:
  explicit WindowWatch(Bridge& bridge);
  ~WindowWatch() override;

  Q_INVOKABLE QVariantList messages() const { return messages_; }
  Q_INVOKABLE QVariantList inputBoxes() const { return inputs_; }
  Q_INVOKABLE void clearMessages() { messages_.clear(); }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void Opened(QWidget& window);
  void AnswerBox(QMessageBox& box);
  void AnswerInput(QWidget& box);
  void AnswerFile(QFileDialog& dialog);
  void ChooseFrom(QMenu& menu);
  void LetScenarioAct(QWidget& window);

  Bridge& bridge_;
  QVariantList messages_;
  QVariantList inputs_;
};

}  // namespace qbx::scenario
