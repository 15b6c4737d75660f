#include "results/flags.h"

#include "results/flag_columns.h"
#include "util/text.h"

namespace qbx {

ResultFlags::ResultFlags(Statements& statements, ResultsView& view, Diagnostics diagnostics)
    : statements_(statements), view_(view), diagnostics_(diagnostics) {}

bool ResultFlags::IsFlag(const QString& column) {
  return FlagColumns().contains(column, Qt::CaseInsensitive);
}

void ResultFlags::ClickCell(const QString& column, qint64 recordId) {
  for (const QString& flag : SendFlags())
    if (EqualsNoCase(column, flag)) return ToggleCheckBox(flag, recordId);
  if (!EqualsNoCase(column, kProcessedFlag)) return;
  if (!processedChangeConfirmed_) {
    const Message question{
        .text = QStringLiteral(
            "Do you want to adjust the Processed flags? Records can be ignored or resent if the flag is adjusted."),
        .icon = MessageIcon::kQuestion,
        .buttons = MessageButtons::kYesNo,
        .question = Question::kChangeProcessedFlags,
        .defaultAnswer = MessageAnswer::kNo};
    if (diagnostics_.ui.ShowMessage(question) != MessageAnswer::kYes) return;
    processedChangeConfirmed_ = true;
  }
  ToggleCheckBox(kProcessedFlag, recordId);
}

void ResultFlags::ToggleCheckBox(const QString& column, qint64 recordId) {
  if (recordId <= 0) return;
  diagnostics_.ui.SetBusy(true);
  const Flip flip = [&] {
    return statements_.dbRunCommandWithParameters(QStringLiteral("proc_updp_Marketing_ToggleCheckbox"),
                                                  {Value(recordId), Value(column)});
  };
  bool toggled = false;
  try {
    toggled = around_ ? around_(column, recordId, flip) : flip();
  } catch (const DatabaseError& error) {
    statements_.ShowFailure(0, QStringLiteral("ToggleCheckBox"), error);
  }
  diagnostics_.ui.SetBusy(false);
  if (toggled) view_.RefreshRows({recordId});
}

}  // namespace qbx
