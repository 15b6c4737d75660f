#include "grids/grid_layout.h"

#include <algorithm>

#include "util/tagged_string.h"
#include "util/text.h"

namespace qbx {
namespace {

constexpr QLatin1String kNamePart(",N:");

QString TwoDigits(int number) {
  return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

QString PositionName(int position) {
  return TwoDigits(position) + QLatin1Char('-');
}

QString ReadEntry(RegistryValues& registry, const QString& key, const QString& name) {
  return registry.sysLoadValueFromRegistry(key, name, {.perUser = true});
}

int IndexOf(const QStringList& fields, const QString& name) {
  const auto same = [&name](const QString& field) { return EqualsNoCase(field, name); };
  const auto found = std::find_if(fields.begin(), fields.end(), same);
  return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
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
  text += QLatin1String("C:") + TwoDigits(place.column);
  return place.name.isEmpty() ? text : text + kNamePart + place.name + u',';
}

std::optional<GridColumnPlace> ParseGridPlace(const QString& text) {
  bool hasWidth = false;
  bool hasColumn = false;
  GridColumnPlace place;
  place.width = strGetTag(text, QStringLiteral("W")).toInt(&hasWidth);
  place.column = strGetTag(text, QStringLiteral("C")).toInt(&hasColumn);
  if (const qsizetype at = text.indexOf(kNamePart); at >= 0) place.name = text.mid(at + kNamePart.size()).chopped(1);
  const QString visible = strGetTag(text, QStringLiteral("V"));
  place.visible = visible.isEmpty() || place.name.isEmpty() ? std::nullopt : std::optional<bool>(visible.toInt() != 0);
  if (!hasWidth || !hasColumn || place.width < 0 || place.column < 0) return std::nullopt;
  return place;
}

void SaveGridLayout(RegistryValues& registry, const QString& key, const GridLayout& layout, int columns) {
  auto place = layout.places.begin();
  for (int position = 0; position < columns; ++position) {
    QString text;
    if (place != layout.places.end() && place->position == position) text = GridPlaceText(*place++);
    if (text.isEmpty() && ReadEntry(registry, key, PositionName(position)).isEmpty()) continue;
    if (!registry.sysSaveValueToRegistry(key, PositionName(position), text, true)) return;
  }
}

GridLayout LoadGridLayout(RegistryValues& registry, const QString& key, const QStringList& fields) {
  const int columns = static_cast<int>(fields.size());
  GridLayout layout;
  std::vector<bool> known(static_cast<size_t>(columns), false);
  for (int position = 0; position < columns; ++position) {
    std::optional<GridColumnPlace> place = ParseGridPlace(ReadEntry(registry, key, PositionName(position)));
    if (place && !place->name.isEmpty()) place->column = IndexOf(fields, place->name);
    if (!place || place->column < 0 || place->column >= columns || known[static_cast<size_t>(place->column)]) continue;
    known[static_cast<size_t>(place->column)] = true;
    place->position = position;
    layout.places.push_back(*place);
  }
  layout.rowHeight = std::max(0, ReadEntry(registry, key, QStringLiteral("RowHeight")).toInt());
  return layout;
}

std::vector<int> ColumnOrder(const GridLayout& layout, int columns) {
  constexpr int kFree = -1;
  std::vector<int> order(static_cast<size_t>(columns), kFree);
  std::vector<bool> placed(static_cast<size_t>(columns), false);
  for (const GridColumnPlace& place : layout.places) {
    order[static_cast<size_t>(place.position)] = place.column;
    placed[static_cast<size_t>(place.column)] = true;
  }
  size_t next = 0;
  for (int& column : order) {
    if (column != kFree) continue;
    while (placed[next])
      ++next;
    column = static_cast<int>(next++);
  }
  return order;
}

}  // namespace qbx
