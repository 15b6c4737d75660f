#include "rtf/missing_fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QSet>
#include <QTextBlock>

namespace qbx {

QList<MissingFont> MissingFonts(const QTextDocument& document, const QTextCharFormat& typedNext) {
  QSet<QString> seen;
  QList<MissingFont> missing;
  const auto look = [&](const QString& name) {
    if (name.isEmpty() || seen.contains(name)) return;
    seen.insert(name);
    if (!QFontDatabase::hasFamily(name)) missing.append({name, QFontInfo(QFont(name)).family()});
  };
  const auto nameIn = [](const QTextCharFormat& format) { return format.fontFamilies().toStringList().value(0); };
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QString name = nameIn(part.fragment().charFormat());
      look(name.isEmpty() ? document.defaultFont().family() : name);
    }
  }
  look(nameIn(typedNext));
  return missing;
}

}  // namespace qbx
