#include "diagnostics/error_report.h"

namespace qbx {

namespace {

constexpr int kErrorEvent = 6;

QString DetailText(int location, const QString& description, bool serious) {
  QString detail = serious ? QStringLiteral("The Description is: ") : QString();
  detail += description;
  if (!description.endsWith(u'.')) detail += u'.';
  return detail + QStringLiteral("\rThe Location ID is %1.").arg(location);
}

}  // namespace

void ErrorReport::ShowError(int location, const QString& procedure, const QString& description, bool serious,
                            Reason reason) {
  const QString detail = DetailText(location, description, serious);
  log_.WriteLog(QLatin1String("ERROR: ") + detail + QLatin1String(" (in ") + procedure + u')');
  const QString advice = serious ? QStringLiteral("You should cancel any unsaved changes and restart the application.")
                                 : QStringLiteral("Please contact QBX if you are unsure about this message.");
  status_.Close();
  if (writeEvent_) writeEvent_(kErrorEvent, 0, QString::number(location), description);
  ui_.ShowMessage({.text = QLatin1String("An unexpected error occured.\r\r") + detail + QLatin1String("\r\r") + advice,
                   .icon = MessageIcon::kExclamation,
                   .title = QStringLiteral("Error"),
                   .defaultAnswer = MessageAnswer::kOk,
                   .reason = reason});
}

}  // namespace qbx
