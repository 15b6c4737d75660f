// The editor of a letter.

#pragma once

#include <QKeyEvent>
#include <QKeySequence>
#include <QPoint>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "rtf/letter.h"
#include "rtf/selection.h"

class QAction;
class QTextCharFormat;
class QTextDocument;

namespace Ui {
class LetterEditor;
}

namespace qbx {

enum class Drawing;
class Spelling;
class SpellingMarks;

/// The letter `rtfLetter` under its tool bar `tbToolBar`, the lists `cmbFontName` and `cmbFontSize`, and a bar to find
/// text. Buttons and lists follow the selection. Under the letter it says what an edit loses and, following what is
/// written, which fonts are missing.
///
///   connect(&editor, &LetterEditor::Edited, this, [&] { state.rtfLetter = editor.Stored(); });
///   editor.Load(state.rtfLetter);
class LetterEditor : public QWidget {
  Q_OBJECT
 public:
  explicit LetterEditor(QWidget* parent = nullptr);
  ~LetterEditor() override;

  /// Shows a stored letter; the user did not edit it then.
  void Load(const QString& stored);
  /// The letter to store; unchanged as long as nobody edited it.
  [[nodiscard]] QString Stored() const;
  [[nodiscard]] QTextDocument& Document();
  /// Inserts a text at the caret as if it were typed.
  void Insert(const QString& text);
  /// Marks misspelt words from now on.
  void CheckSpelling(const std::shared_ptr<Spelling>& spelling);

 Q_SIGNALS:
  /// After each change that the user makes.
  void Edited();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddClipboardActions();
  void AddLookActions();
  void AddParagraphActions();
  void AddOtherActions();
  QAction* AddAction(const char* name, const QString& text, Drawing drawing, const QKeySequence& keys,
                     const std::function<void()>& act);
  void AddSeparator();
  void FillFontLists();
  void SetTabOrder();
  [[nodiscard]] SelectionLook Selected() const;
  void Apply(const QTextCharFormat& look);
  void ChooseColour();
  void Find(bool backwards);
  void CloseFind();
  void ShowSelection();
  /// Updates an action whenever the selection changes.
  void Follow(QAction* action, std::function<bool(const SelectionLook&)> holds);
  void ShowNote();
  void ShowMenu(const QPoint& position);

  std::unique_ptr<Ui::LetterEditor> ui_;
  std::unique_ptr<Letter> letter_;
  std::vector<std::pair<QAction*, std::function<bool(const SelectionLook&)>>> followers_;
  SpellingMarks* marks_ = nullptr;  ///< owned by the document
  RtfLosses losses_;                ///< what an edit of the loaded letter loses
  QTimer note_;
  bool loading_ = false;
};

}  // namespace qbx
