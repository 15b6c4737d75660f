// What an .xls workbook holds before its sheet: formats of cells, names, texts.

#pragma once

#include <vector>

#include "exporting/biff_stream.h"
#include "exporting/export_sheet.h"

namespace qbx {

/// The formats of cells, by their numbers in the workbook.
struct XlsLooks {
  quint16 plain = 0;
  quint16 heading = 0;
  quint16 date = 0;
  quint16 dateTime = 0;
  std::vector<quint16> decimals;  ///< by column
};

/// Writes fonts, number formats and cell formats.
[[nodiscard]] XlsLooks WriteXlsLooks(BiffStream& out, const std::vector<ExportColumn>& columns);

/// Writes the name of the one sheet. \return where the sheet's position must be written once it is known
[[nodiscard]] qint64 WriteXlsSheetName(BiffStream& out, const QString& title);

/// Marks the first row as the one that has the filter buttons and is printed on every page.
void WriteXlsHeadingNames(BiffStream& out, qint64 rows, int columns);

// The filter buttons are drawn objects; a program shows no button without its object.

/// Writes the number of buttons on the sheet.
void WriteXlsButtonCount(BiffStream& out, int columns);
/// Writes one button in the first row of each column.
void WriteXlsButtons(BiffStream& out, int columns);

}  // namespace qbx
