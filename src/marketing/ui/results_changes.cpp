#include "marketing/ui/results_changes.h"

#include <QByteArray>
#include <QItemSelectionModel>
#include <QKeySequence>
#include <QObject>
#include <QString>

#include "dispatch/tick_reasons.h"
#include "results/flag_columns.h"

namespace qbx {

ResultsChanges::ResultsChanges(Parts parts) : parts_(std::move(parts)) {
  AddFlag(Channel::kSms, kSendSmsFlag, QStringLiteral("&Tick Send SMS"), QStringLiteral("Untic&k Send SMS"), Qt::Key_T);
  AddFlag(Channel::kEmail, kSendEmailFlag, QStringLiteral("Tick Send &Email"), QStringLiteral("Untick Send Ema&il"),
          Qt::Key_E);
  AddFlag(Channel::kLetter, kSendLetterFlag, QStringLiteral("Tick Send &Letter"), QStringLiteral("Untick Send Lette&r"),
          Qt::Key_L);
  takeOut_ = Add("mnuTakeOut", QStringLiteral("Take &out"), QKeySequence(Qt::Key_Delete), [this] { TakeOut(); });
  undo_ = Add("mnuUndo", QStringLiteral("&Undo"), QKeySequence(QKeySequence::Undo), [this] { Undo(); });
  QObject::connect(parts_.grid.Grid()->selectionModel(), &QItemSelectionModel::selectionChanged, undo_,
                   [this] { Update(); });
  Update();
}

QAction* ResultsChanges::Add(const char* name, const QString& text, const QKeySequence& keys,
                             const std::function<void()>& command) {
  auto* action = new QAction(text, parts_.grid.Grid());
  action->setObjectName(QLatin1String(name));
  action->setShortcut(keys);
  action->setShortcutContext(Qt::WidgetShortcut);
  action->setShortcutVisibleInContextMenu(true);
  QObject::connect(action, &QAction::triggered, action, [this, command] { parts_.run(command); });
  parts_.grid.Grid()->addAction(action);
  return action;
}

void ResultsChanges::AddFlag(Channel channel, QLatin1String field, const QString& tick, const QString& untick,
                             Qt::Key key) {
  QAction* ticks = Add((QByteArray("mnuTick_") + field.data()).constData(), tick, QKeySequence(Qt::CTRL | key),
                       [this, channel] { SetFlag(channel, true); });
  QAction* unticks = Add((QByteArray("mnuUntick_") + field.data()).constData(), untick,
                         QKeySequence(Qt::CTRL | Qt::SHIFT | key), [this, channel] { SetFlag(channel, false); });
  flags_.push_back({channel, field, ticks, unticks});
}

void ResultsChanges::Update() {
  const qint64 selected = std::max<qint64>(parts_.grid.SelectedCount(), parts_.grid.CurrentRow() >= 0 ? 1 : 0);
  for (const Flag& flag : flags_) {
    const QString reason =
        selected == 1 ? WhyNoFlag(parts_.results.Rows(), parts_.grid.CurrentRow(), flag.field) : QString();
    flag.tick->setEnabled(selected > 0 && reason.isEmpty());
    flag.tick->setToolTip(reason);
    flag.untick->setEnabled(selected > 0);
  }
  takeOut_->setEnabled(selected > 0);
  takeOut_->setText(QStringLiteral("Take &out %1").arg(RowsText(static_cast<std::size_t>(selected))));
  const QString last = parts_.edits.LastChange();
  undo_->setEnabled(!last.isEmpty());
  undo_->setText(last.isEmpty() ? QStringLiteral("&Undo") : QStringLiteral("&Undo: %1").arg(last));
}

void ResultsChanges::SetFlag(Channel channel, bool ticked) {
  const std::vector<qint64> rows = parts_.grid.SelectedIDs();
  if (rows.empty()) return;
  Tell(parts_.edits.SetFlag(channel, ticked, rows), ticked ? QStringLiteral("ticked") : QStringLiteral("unticked"));
}

void ResultsChanges::TakeOut() {
  const std::vector<qint64> rows = parts_.grid.SelectedIDs();
  if (rows.empty() || !parts_.edits.MayEditShown()) return;
  const Message question{
      .text = QStringLiteral("Take %1 out of the results?\r\rUndo (Ctrl+Z) puts them back.").arg(RowsText(rows.size())),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo};
  if (parts_.ui.ShowMessage(question) != MessageAnswer::kYes) return;
  Tell(parts_.edits.TakeOut(rows), QStringLiteral("taken out"));
}

void ResultsChanges::Undo() {
  Tell(parts_.edits.Undo(), QStringLiteral("put back"));
}

/// Tells the result of a change. A refusal or failure was already shown in a box.
void ResultsChanges::Tell(const RowChange& change, const QString& done) {
  if (!change.refusal && (!change.changed.empty() || change.LeftAlone() > 0)) parts_.tell(ChangeText(change, done));
  Update();
}

}  // namespace qbx
