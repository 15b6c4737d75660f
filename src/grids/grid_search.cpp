#include "grids/grid_search.h"

#include <QByteArray>
#include <algorithm>

#include "database/text_compare.h"

namespace qbx {
namespace {

/// A column, and how its cells are searched.
struct SearchedColumn {
  int column = 0;
  const GridColumn& format;
  bool asStored = false;  ///< whether texts are shown as they are stored
};

bool OnlyHas(const QString& text, const QString& signs) {
  return std::all_of(text.begin(), text.end(),
                     [&signs](QChar c) { return c.isDigit() || signs.contains(c, Qt::CaseInsensitive); });
}

/// Whether a column can show a text. Formatting every number and date to compare it takes longer than comparing all
/// texts.
bool MayShow(const GridColumn& format, const QString& text) {
  if (format.format == GridFormat::kTick) return false;
  if (format.IsNumber()) return OnlyHas(text, QStringLiteral(".-+e"));
  return format.type != ValueType::kDateTime || OnlyHas(text, QStringLiteral("/: "));
}

std::vector<SearchedColumn> ColumnsFor(const QString& text, const std::vector<GridColumn>& columns,
                                       const std::vector<int>& shown) {
  std::vector<SearchedColumn> searched;
  for (const int column : shown) {
    const GridColumn& format = columns[static_cast<std::size_t>(column)];
    if (MayShow(format, text)) searched.push_back({column, format, format.type == ValueType::kText});
  }
  return searched;
}

}  // namespace

FoundCell FindText(const Recordset& rows, const std::vector<GridColumn>& columns, const std::vector<int>& shown,
                   const QString& text, qint64 from, bool backwards) {
  const qint64 count = rows.RecordCount();
  if (text.isEmpty() || count <= 0) return {};
  const QByteArray utf8 = text.toUtf8();
  const SoughtText sought(std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
  const std::vector<SearchedColumn> searched = ColumnsFor(text, columns, shown);
  const auto holds = [&](qint64 row, const SearchedColumn& in) {
    const Cell cell = rows.At(row, in.column);
    if (cell.type == ValueType::kNull) return false;
    if (cell.type == ValueType::kText && in.asStored) return sought.IsIn(cell.utf8);
    return GridText(cell, in.format).contains(text, Qt::CaseInsensitive);
  };
  qint64 row = (from % count + count) % count;
  for (qint64 looked = 0; looked < count; ++looked) {
    for (const SearchedColumn& in : searched)
      if (holds(row, in)) return {row, in.column};
    row = backwards ? (row == 0 ? count : row) - 1 : (row + 1 == count ? 0 : row + 1);
  }
  return {};
}

}  // namespace qbx
