#include "diagnostics/message_catalogue.h"

#include <algorithm>
#include <array>

namespace qbx {

namespace {

struct CatalogueEntry {
  int number;
  const char* text;
};

constexpr std::array kCatalogue = {
    CatalogueEntry{4, "Could not set value"},
    CatalogueEntry{5, "Couldn't write new value."},
    CatalogueEntry{103, "Deleting multiple rows is not supported."},
    CatalogueEntry{107, "Nothing to be selected."},
    CatalogueEntry{
        108,
        "Warning: There are <<%1>> records to be selected - this may take some time.  Are you sure you want to continue?"},
    CatalogueEntry{113, "The report could not be shown."},
    CatalogueEntry{221, "The user options could not be read."},
};

}  // namespace

QString AppMessage(int number, const QStringList& values) {
  const auto* const entry = std::find_if(kCatalogue.begin(), kCatalogue.end(),
                                         [number](const CatalogueEntry& each) { return each.number == number; });
  if (entry == kCatalogue.end()) return QStringLiteral("Message number %1 is missing.").arg(number);
  QString text = QString::fromLatin1(entry->text);
  text.replace(QLatin1String("\\n"), QLatin1String("\r"));
  for (qsizetype index = 0; index < values.size(); ++index)
    text.replace(QStringLiteral("<<%%1>>").arg(index + 1), values[index]);
  return text;
}

}  // namespace qbx
