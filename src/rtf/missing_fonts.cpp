#include "rtf/missing_fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QSet>
#include <QTextBlock>

namespace qbx {

QList<MissingFont> MissingFonts(const QTextDocument& document) {
  QSet<QString> seen;
  QList<MissingFont> missing;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QString name = part.fragment().charFormat().fontFamilies().toStringList().value(0);
      if (name.isEmpty() || seen.contains(name)) continue;
      seen.insert(name);
      if (!QFontDatabase::hasFamily(name)) missing.append({name, QFontInfo(QFont(name)).family()});
    }
  }
  return missing;
}

}  // namespace qbx
