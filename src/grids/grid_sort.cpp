#include "grids/grid_sort.h"

namespace qbx {

QString SortText(const GridSort& sort) {
  if (sort.column.isEmpty()) return {};
  return u'[' + sort.column + QLatin1String(sort.descending ? "] DESC" : "] ASC");
}

GridSort ParseSort(const QString& text) {
  GridSort sort{text.trimmed(), false};
  for (const char* direction : {" DESC", " ASC"}) {
    if (!sort.column.endsWith(QLatin1String(direction), Qt::CaseInsensitive)) continue;
    sort.descending = direction[1] == 'D';
    sort.column = sort.column.chopped(QLatin1String(direction).size()).trimmed();
    break;
  }
  if (sort.column.startsWith(u'[') && sort.column.endsWith(u']')) sort.column = sort.column.mid(1).chopped(1);
  return sort;
}

GridSort SortAfterClick(const GridSort& now, const QString& column) {
  if (now.column.compare(column, Qt::CaseInsensitive) != 0) return {column, false};
  return {column, !now.descending};
}

}  // namespace qbx
