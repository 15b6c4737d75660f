// Message boxes, input boxes and other modal windows that open during a command of the scenario.

#pragma once

#include <QObject>
#include <QVariantList>

#include "bridge.h"

class QFileDialog;
class QMenu;
class QMessageBox;
class QWidget;

namespace qbx::scenario {

/// Notices every window that the program opens. When the program waits for an answer, this asks the scenario from
/// inside the program's event loop, and answers by pressing the window's own buttons. It closes windows that the
/// scenario does not answer, so that the scenario always ends.
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
