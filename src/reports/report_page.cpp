#include "reports/report_page.h"

#include <QRegularExpression>

namespace qbx {

QStringList TextsThatDoNotFit(const ReportPage& page) {
  static const QRegularExpression lineEnd(QStringLiteral("[\r\n]"));
  QStringList texts;
  for (const PlacedObject& placed : page.objects)
    if (placed.cut) texts += placed.text.trimmed().section(lineEnd, 0, 0);
  return texts;
}

}  // namespace qbx
