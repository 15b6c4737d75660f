#include "reports/report_error.h"

#include <QFileInfo>

namespace qbx {

QString ReportError::Description() const {
  if (file.isEmpty()) return text;
  const QString name = QFileInfo(file).fileName();
  return line > 0 ? QStringLiteral("%1, line %2: %3").arg(name).arg(line).arg(text)
                  : QStringLiteral("%1: %2").arg(name, text);
}

}  // namespace qbx
