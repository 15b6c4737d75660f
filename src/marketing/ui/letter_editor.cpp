#include "marketing/ui/letter_editor.h"

#include <QAction>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QDoubleValidator>
#include <QFont>
#include <QFontDatabase>
#include <QFrame>
#include <QKeyCombination>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPoint>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QToolButton>

#include "marketing/ui/spelling_marks.h"
#include "platform/ui/drawn_icon.h"
#include "platform/ui/modal.h"
#include "rtf/missing_fonts.h"
#include "ui_letter_editor.h"

namespace qbx {
namespace {

constexpr double kLetterPoints = 10;
constexpr double kMaxPoints = 1638;
constexpr int kNoteAfter = 300;  // milliseconds without a key
constexpr int kToolGap = 5;      // on each side of the line between two groups of tools

}  // namespace

LetterEditor::LetterEditor(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::LetterEditor>()) {
  ui_->setupUi(this);
  QFont font(QStringLiteral("Tahoma"));
  font.setPointSizeF(kLetterPoints);
  Document().setDefaultFont(font);
  letter_ = std::make_unique<Letter>(Document());
  FillFontLists();
  AddClipboardActions();
  AddLookActions();
  AddParagraphActions();
  AddOtherActions();
  SetTabOrder();
  ui_->fraFind->hide();
  ui_->lblLetterNote->hide();
  note_.setSingleShot(true);
  note_.setInterval(kNoteAfter);
  connect(&note_, &QTimer::timeout, this, &LetterEditor::ShowNote);

  connect(ui_->cmdFindNext, &QPushButton::clicked, this, [this] { Find(false); });
  connect(ui_->cmdFindPrevious, &QPushButton::clicked, this, [this] { Find(true); });
  connect(ui_->txtFind, &QLineEdit::textEdited, ui_->lblFound, &QLabel::clear);
  connect(ui_->rtfLetter, &QTextEdit::selectionChanged, this, &LetterEditor::ShowSelection);
  connect(ui_->rtfLetter, &QTextEdit::cursorPositionChanged, this, &LetterEditor::ShowSelection);
  connect(ui_->rtfLetter, &QTextEdit::currentCharFormatChanged, this, &LetterEditor::ShowSelection);
  ui_->rtfLetter->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(ui_->rtfLetter, &QWidget::customContextMenuRequested, this, &LetterEditor::ShowMenu);
  connect(ui_->rtfLetter, &QTextEdit::textChanged, this, [this] {
    if (loading_) return;
    ShowSelection();
    note_.start();
    Q_EMIT Edited();
  });
  ShowSelection();
}

LetterEditor::~LetterEditor() = default;

void LetterEditor::Insert(const QString& text) {
  ui_->rtfLetter->insertPlainText(text);
}

void LetterEditor::CheckSpelling(const std::shared_ptr<Spelling>& spelling) {
  marks_ = new SpellingMarks(*ui_->rtfLetter, spelling);
}

QTextDocument& LetterEditor::Document() {
  return *ui_->rtfLetter->document();
}

void LetterEditor::Load(const QString& stored) {
  loading_ = true;
  losses_ = letter_->Load(stored);
  ui_->rtfLetter->setTextCursor(QTextCursor(&Document()));
  loading_ = false;
  ShowSelection();
  ShowNote();
}

QString LetterEditor::Stored() const {
  return letter_->Stored();
}

void LetterEditor::ShowNote() {
  note_.stop();
  QStringList notes;
  if (!losses_.isEmpty())
    notes << QStringLiteral("When this letter is edited it loses: %1.").arg(losses_.join(QStringLiteral(", ")));
  QStringList missing;
  for (const MissingFont& font : MissingFonts(Document(), ui_->rtfLetter->currentCharFormat()))
    missing << QStringLiteral("%1 (shown as %2)").arg(font.name, font.shownAs);
  if (!missing.isEmpty())
    notes << QStringLiteral("Fonts that are not on this computer: %1. The letter keeps their names.")
                 .arg(missing.join(QStringLiteral(", ")));
  ui_->lblLetterNote->setText(notes.join(u'\n'));
  ui_->lblLetterNote->setVisible(!notes.isEmpty());
}

QAction* LetterEditor::AddAction(const char* name, const QString& text, Drawing drawing, const QKeySequence& keys,
                                 const std::function<void()>& act) {
  auto* action = new QAction(DrawnIcon(drawing), text, this);
  action->setObjectName(QLatin1String(name));
  action->setShortcut(keys);
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  const QString shortcut = keys.toString(QKeySequence::NativeText);
  action->setToolTip(shortcut.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, shortcut));
  addAction(action);
  auto* button = new QToolButton(ui_->tbToolBar);
  ui_->layoutToolBar->addWidget(button);
  button->setDefaultAction(action);
  button->setAutoRaise(true);
  button->setObjectName(QStringLiteral("cmd") + QLatin1String(name));
  button->setAccessibleName(text);
  button->setFocusPolicy(Qt::TabFocus);
  connect(action, &QAction::triggered, this, act);
  return action;
}

void LetterEditor::AddSeparator() {
  auto* line = new QFrame(ui_->tbToolBar);
  line->setFrameStyle(QFrame::VLine | QFrame::Sunken);
  ui_->layoutToolBar->addSpacing(kToolGap);
  ui_->layoutToolBar->addWidget(line);
  ui_->layoutToolBar->addSpacing(kToolGap);
}

// The tools are made after the form but are above it. Each widget that follows them is placed right after the last
// tool, from the last widget to the first: the tab order is a ring, in which the form's first widget already follows
// the last tool.
void LetterEditor::SetTabOrder() {
  QToolButton* lastTool = ui_->tbToolBar->findChildren<QToolButton*>().constLast();
  for (QWidget* widget : std::initializer_list<QWidget*>{ui_->rtfLetter, ui_->cmdFindPrevious, ui_->cmdFindNext,
                                                         ui_->txtFind, ui_->cmbFontSize, ui_->cmbFontName})
    setTabOrder(lastTool, widget);
}

void LetterEditor::AddClipboardActions() {
  LetterBox* box = ui_->rtfLetter;
  AddAction("Cut", QStringLiteral("Cut"), Drawing::kCut, QKeySequence::Cut, [box] { box->CutText(); });
  AddAction("Copy", QStringLiteral("Copy"), Drawing::kCopy, QKeySequence::Copy, [box] { box->CopyText(); });
  AddAction("Paste", QStringLiteral("Paste"), Drawing::kPaste, QKeySequence::Paste, [box] { box->paste(); });
  AddSeparator();
}

void LetterEditor::Follow(QAction* action, std::function<bool(const SelectionLook&)> holds) {
  action->setCheckable(true);
  followers_.emplace_back(action, std::move(holds));
}

void LetterEditor::AddLookActions() {
  QAction* bold = AddAction("Bold", QStringLiteral("Bold"), Drawing::kBold, QKeySequence::Bold, [this] {
    QTextCharFormat look;
    look.setFontWeight(Selected().bold ? QFont::Normal : QFont::Bold);
    Apply(look);
  });
  QAction* italic = AddAction("Italic", QStringLiteral("Italic"), Drawing::kItalic, QKeySequence::Italic, [this] {
    QTextCharFormat look;
    look.setFontItalic(!Selected().italic);
    Apply(look);
  });
  const auto turnLine = [this] {
    QTextCharFormat look;
    look.setFontUnderline(!Selected().underline);
    Apply(look);
  };
  QAction* underline =
      AddAction("Underline", QStringLiteral("Underline"), Drawing::kUnderline, QKeySequence::Underline, turnLine);
  Follow(bold, [](const SelectionLook& look) { return look.bold; });
  Follow(italic, [](const SelectionLook& look) { return look.italic; });
  Follow(underline, [](const SelectionLook& look) { return look.underline; });
  AddAction("Colour", QStringLiteral("Colour"), Drawing::kColour, {}, [this] { ChooseColour(); });
  AddSeparator();
}

void LetterEditor::AddParagraphActions() {
  const auto add = [this](const char* name, const char* text, Drawing drawing, QKeyCombination keys,
                          Qt::Alignment alignment) {
    QAction* action = AddAction(name, QLatin1String(text), drawing, QKeySequence(keys), [this, alignment] {
      ui_->rtfLetter->setAlignment(alignment);
      ShowSelection();
    });
    Follow(action, [alignment](const SelectionLook& look) { return look.alignment == alignment; });
  };
  add("AlignLeft", "Align Left", Drawing::kAlignLeft, Qt::CTRL | Qt::Key_L, Qt::AlignLeft);
  add("Center", "Center", Drawing::kAlignCentre, Qt::CTRL | Qt::Key_E, Qt::AlignHCenter);
  add("AlignRight", "Align Right", Drawing::kAlignRight, Qt::CTRL | Qt::Key_R, Qt::AlignRight);
  QAction* bullets =
      AddAction("Bullets", QStringLiteral("Bullets"), Drawing::kBullets, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_L),
                [this] { SetBullets(ui_->rtfLetter->textCursor(), !Selected().bullets); });
  Follow(bullets, [](const SelectionLook& look) { return look.bullets; });
  const auto breakPage = [this] {
    QTextCursor cursor = ui_->rtfLetter->textCursor();
    TogglePageBreak(cursor);
    ui_->rtfLetter->setTextCursor(cursor);
  };
  QAction* pageBreak = AddAction("PageBreak", QStringLiteral("Page Break"), Drawing::kPageBreak,
                                 QKeySequence(Qt::CTRL | Qt::Key_Return), breakPage);
  Follow(pageBreak, [](const SelectionLook& look) { return look.pageBreak; });
  AddSeparator();
}

void LetterEditor::AddOtherActions() {
  LetterBox* box = ui_->rtfLetter;
  QAction* undo = AddAction("Undo", QStringLiteral("Undo"), Drawing::kUndo, QKeySequence::Undo, [box] { box->undo(); });
  QAction* redo = AddAction("Redo", QStringLiteral("Redo"), Drawing::kRedo, QKeySequence::Redo, [box] { box->redo(); });
  for (QAction* action : {undo, redo})
    action->setEnabled(false);
  connect(box, &QTextEdit::undoAvailable, undo, &QAction::setEnabled);
  connect(box, &QTextEdit::redoAvailable, redo, &QAction::setEnabled);
  AddAction("Find", QStringLiteral("Find"), Drawing::kFind, QKeySequence::Find, [this] {
    ui_->fraFind->show();
    ui_->txtFind->setFocus();
    ui_->txtFind->selectAll();
  });
}

void LetterEditor::FillFontLists() {
  ui_->cmbFontName->addItems(QFontDatabase::families());
  for (const int points : QFontDatabase::standardSizes())
    ui_->cmbFontSize->addItem(QString::number(points));
  auto* sizes = new QDoubleValidator(1, kMaxPoints, 1, this);
  sizes->setLocale(QLocale::c());
  ui_->cmbFontSize->setValidator(sizes);

  // Return also chooses the list's entry: what the selection already has is not one more step to undo.
  const auto setName = [this] {
    const QString name = ui_->cmbFontName->currentText().trimmed();
    QTextCharFormat look;
    look.setFontFamilies({name});
    if (name == Selected().family) return ui_->rtfLetter->setFocus();
    if (!name.isEmpty()) Apply(look);
  };
  const auto setSize = [this] {
    const double points = ui_->cmbFontSize->currentText().toDouble();
    QTextCharFormat look;
    look.setFontPointSize(points);
    if (points == Selected().points) return ui_->rtfLetter->setFocus();
    if (points >= 1) Apply(look);
  };
  connect(ui_->cmbFontName, &QComboBox::textActivated, this, setName);
  connect(ui_->cmbFontName->lineEdit(), &QLineEdit::returnPressed, this, setName);
  connect(ui_->cmbFontSize, &QComboBox::textActivated, this, setSize);
  connect(ui_->cmbFontSize->lineEdit(), &QLineEdit::returnPressed, this, setSize);
}

SelectionLook LetterEditor::Selected() const {
  return LookOfSelection(ui_->rtfLetter->textCursor(), ui_->rtfLetter->currentCharFormat());
}

void LetterEditor::Apply(const QTextCharFormat& look) {
  ui_->rtfLetter->mergeCurrentCharFormat(look);
  ui_->rtfLetter->setFocus();
  ShowSelection();
  ShowNote();
}

void LetterEditor::ChooseColour() {
  QColorDialog dialog(ui_->rtfLetter->textColor(), this);
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if (ShowModal(dialog) != QDialog::Accepted) return;
  QTextCharFormat look;
  look.setForeground(dialog.selectedColor());
  Apply(look);
}

void LetterEditor::ShowSelection() {
  if (loading_) return;
  const SelectionLook look = Selected();
  for (const auto& [action, holds] : followers_)
    action->setChecked(holds(look));
  ui_->cmbFontName->setCurrentText(look.family);
  ui_->cmbFontSize->setCurrentText(look.points > 0 ? QString::number(look.points) : QString());
  const bool selected = ui_->rtfLetter->textCursor().hasSelection();
  for (const char* name : {"Cut", "Copy"})
    findChild<QAction*>(QLatin1String(name))->setEnabled(selected);
}

void LetterEditor::ShowMenu(const QPoint& position) {
  QMenu menu(this);
  for (const char* name : {"Undo", "Redo", "", "Cut", "Copy", "Paste", "", "PageBreak"}) {
    if (*name == '\0') {
      menu.addSeparator();
    } else {
      menu.addAction(findChild<QAction*>(QLatin1String(name)));
    }
  }
  if (marks_ != nullptr) marks_->AddTo(menu, position);
  menu.exec(ui_->rtfLetter->viewport()->mapToGlobal(position));
}

void LetterEditor::Find(bool backwards) {
  const QString text = ui_->txtFind->text();
  if (text.isEmpty()) return;
  const QTextDocument::FindFlags flags = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  QTextCursor found = Document().find(text, ui_->rtfLetter->textCursor(), flags);
  if (found.isNull()) {
    QTextCursor end(&Document());
    if (backwards) end.movePosition(QTextCursor::End);
    found = Document().find(text, end, flags);
  }
  ui_->lblFound->setText(found.isNull() ? QStringLiteral("Not found.") : QString());
  if (!found.isNull()) ui_->rtfLetter->setTextCursor(found);
}

void LetterEditor::CloseFind() {
  ui_->fraFind->hide();
  ui_->rtfLetter->setFocus();
}

void LetterEditor::keyPressEvent(QKeyEvent* event) {
  const bool finding = ui_->fraFind->isVisible();
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool inFind = ui_->txtFind->hasFocus();
  if (event->key() == Qt::Key_F3 || (enter && inFind)) return Find((event->modifiers() & Qt::ShiftModifier) != 0);
  if (event->key() == Qt::Key_Escape && finding) return CloseFind();
  // In these lists Enter takes the typed value, and must not press a button of the page.
  if (enter && (ui_->cmbFontName->hasFocus() || ui_->cmbFontSize->hasFocus())) return;
  QWidget::keyPressEvent(event);
}

}  // namespace qbx
