#include "marketing/ui/spelling.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QEvent>
#include <QFont>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QPalette>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QWidget>

#include "platform/ui/contrast.h"

namespace qbx {
namespace {

constexpr char kOwnWordsName[] = "MARKETING-WORDS-%1.TXT";
constexpr char kSection[] = "Spelling";
constexpr char kCheck[] = "Check";
constexpr qsizetype kMostSuggestions = 7;
constexpr double kWaveContrast = 7;  // a wave is thin, and half of it is drawn faintly

SpellingFiles FilesFor(const StartupValues& startup) {
  // A user's name may hold characters that a file name cannot.
  const QString user = QString::fromLatin1(QUrl::toPercentEncoding(startup.user.toLower(), " "));
  return {.languages = {QLocale().name(), QStringLiteral("en_GB")},
          .ownWords = startup.ProgramFolder + QString::fromLatin1(kOwnWordsName).arg(user)};
}

}  // namespace

Spelling::Spelling(Application& app)
    : app_(app),
      checker_(FilesFor(app.startup)),
      on_(app.registry.sysLoadValueFromRegistry(QLatin1String(kSection), QLatin1String(kCheck), {.perUser = true}) !=
          QLatin1String("False")) {}

QTextCharFormat Spelling::Mark(const QWidget& box) {
  const QPalette& palette = box.palette();
  QTextCharFormat mark;
  mark.setUnderlineStyle(QTextCharFormat::WaveUnderline);
  mark.setUnderlineColor(
      Readable(Qt::red, palette.color(QPalette::Text), {palette.color(QPalette::Base)}, kWaveContrast));
  return mark;
}

void Spelling::AddTo(QMenu& menu, const QString& word, const std::function<void(const QString&)>& replace) {
  if (!word.isEmpty() && IsWrong(word)) AddWordEntries(menu, menu.actions().value(0), word, replace);
  menu.addSeparator();
  if (!checker_.HasDictionary()) {
    menu.addAction(QStringLiteral("No dictionary for English (UK) is installed"))->setEnabled(false);
    return;
  }
  QAction* check = menu.addAction(QStringLiteral("Check &spelling"));
  check->setCheckable(true);
  check->setChecked(on_);
  connect(check, &QAction::triggered, this, &Spelling::TurnOn);
}

void Spelling::AddWordEntries(QMenu& menu, QAction* first, const QString& word,
                              const std::function<void(const QString&)>& replace) {
  const auto add = [&](const QString& text) {
    auto* action = new QAction(text, &menu);
    menu.insertAction(first, action);
    return action;
  };
  const QStringList suggestions = checker_.Suggestions(word).mid(0, kMostSuggestions);
  for (const QString& suggestion : suggestions) {
    QAction* action = add(suggestion);
    QFont font = menu.font();
    font.setBold(true);
    action->setFont(font);
    connect(action, &QAction::triggered, this, [replace, suggestion] { replace(suggestion); });
  }
  if (suggestions.isEmpty()) add(QStringLiteral("No suggestions"))->setEnabled(false);
  menu.insertSeparator(first);
  connect(add(QStringLiteral("&Add to dictionary")), &QAction::triggered, this, [this, word] { AddWord(word); });
  connect(add(QStringLiteral("&Ignore")), &QAction::triggered, this, [this, word] {
    checker_.IgnoreWord(word);
    Q_EMIT Changed();
  });
  menu.insertSeparator(first);
}

void Spelling::TurnOn(bool on) {
  on_ = on;
  app_.registry.sysSaveValueToRegistry(QLatin1String(kSection), QLatin1String(kCheck),
                                       on ? QStringLiteral("True") : QStringLiteral("False"), true);
  Q_EMIT Changed();
}

void Spelling::AddWord(const QString& word) {
  const QString failure = checker_.AddWord(word);
  Q_EMIT Changed();
  if (!failure.isEmpty()) app_.ui.ShowMessage({.text = failure, .icon = MessageIcon::kExclamation});
}

bool Spelling::OpensMenu(QWidget& box, const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  if (key.key() != Qt::Key_F10 || key.modifiers() != Qt::ShiftModifier) return false;
  const QPoint caret = box.inputMethodQuery(Qt::ImCursorRectangle).toRectF().center().toPoint();
  QContextMenuEvent menu(QContextMenuEvent::Keyboard, caret, box.mapToGlobal(caret));
  QCoreApplication::sendEvent(&box, &menu);
  return true;
}

}  // namespace qbx
