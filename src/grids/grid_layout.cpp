// The column layout of a grid, kept per user in the registry.

#include "grids/grid_layout.h"

#include "util/tagged_string.h"

namespace qbx {
namespace {

constexpr int kMostPositions = 100;

QString TwoDigits(int number) {
  return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

QString PositionName(int position) {
  return TwoDigits(position) + QLatin1Char('-');
}

}  // namespace

QString GridLayoutKey(const QString& window, const QString& grid, std::optional<int> index) {
  const bool isData = grid.compare(QLatin1String("dbgData"), Qt::CaseInsensitive) == 0;
  QString key = window + (isData ? QStringLiteral("DataGrid") : grid);
  if (index) key += QStringLiteral("(%1)").arg(*index);
  return key;
}

QString GridPlaceText(const GridColumnPlace& place) {
  QString text = QStringLiteral("W:%1,").arg(place.width);
  if (place.visible) text += *place.visible ? QLatin1String("V:-1,") : QLatin1String("V:0,");
  return text + QLatin1String("C:") + TwoDigits(place.column);
}

std::optional<GridColumnPlace> ParseGridPlace(const QString& text) {
  bool hasWidth = false;
  bool hasColumn = false;
  GridColumnPlace place;
  place.width = strGetTag(text, QStringLiteral("W")).toInt(&hasWidth);
  place.column = strGetTag(text, QStringLiteral("C")).toInt(&hasColumn);
  const QString visible = strGetTag(text, QStringLiteral("V"));
  place.visible = visible.isEmpty() ? std::nullopt : std::optional<bool>(visible.toInt() != 0);
  if (!hasWidth || !hasColumn || place.width < 0 || place.column < 0) return std::nullopt;
  return place;
}

void SaveGridLayout(RegistryValues& registry, const QString& key, const GridLayout& layout) {
  int position = 0;
  for (const GridColumnPlace& place : layout.places) {
    if (!registry.sysSaveValueToRegistry(key, PositionName(position), GridPlaceText(place), true)) return;
    ++position;
  }
}

GridLayout LoadGridLayout(RegistryValues& registry, const QString& key) {
  const auto read = [&registry, &key](const QString& name) {
    return registry.sysLoadValueFromRegistry(key, name, {.perUser = true});
  };
  GridLayout layout;
  for (int position = 0; position < kMostPositions; ++position) {
    const QString text = read(PositionName(position));
    if (text.isEmpty()) break;
    if (const std::optional<GridColumnPlace> place = ParseGridPlace(text)) layout.places.push_back(*place);
  }
  layout.rowHeight = std::max(0, read(QStringLiteral("RowHeight")).toInt());
  return layout;
}

}  // namespace qbx
