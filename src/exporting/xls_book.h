// What an .xls workbook says before its sheet: how cells look, names, texts.

#pragma once

#include <vector>

#include "exporting/biff_stream.h"
#include "exporting/export_sheet.h"

namespace qbx {

/// The looks of cells, by the numbers under which the workbook has them.
struct XlsLooks {
  quint16 plain = 0;
  quint16 heading = 0;
  quint16 date = 0;
  quint16 dateTime = 0;
  std::vector<quint16> decimals;  ///< by column
};

/// Fonts, number formats and looks.
[[nodiscard]] XlsLooks WriteXlsLooks(BiffStream& out, const std::vector<ExportColumn>& columns);

/// The one sheet. \return where the place of the sheet is to be written once it is known
[[nodiscard]] qint64 WriteXlsSheetName(BiffStream& out, const QString& title);

/// The first row as the one that has the filter buttons and is printed on every page.
void WriteXlsHeadingNames(BiffStream& out, qint64 rows, int columns);

// The buttons are drawn objects: a program that finds none shows none.

/// How many there are on the sheet.
void WriteXlsButtonCount(BiffStream& out, int columns);
/// One in the first row of each column.
void WriteXlsButtons(BiffStream& out, int columns);

}  // namespace qbx
