// The spreadsheet window: the rows of a grid, to look at, print and save.

#pragma once

#include <QDialog>
#include <QSet>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

#include "database/event_log.h"
#include "diagnostics/diagnostics.h"
#include "exporting/export_file.h"
#include "grids/ui/cDataGrid.h"
#include "platform/shell.h"
#include "settings/ui/window_layout.h"

namespace Ui {
class frmSpreadsheet;
}

namespace qbx {

class SpreadsheetModel;

/// What the window works with. The references must outlive it.
struct SpreadsheetParts {
  RegistryValues& registry;
  WindowLayout& layout;
  EventLog& events;
  Diagnostics diagnostics;
  Shell& shell;
  /// Prints rows without the columns of these fields (in lower case).
  std::function<void(const Recordset& rows, const QSet<QString>& hidden)> print;
};

/// What is shown: the visible columns of the grid in its order, and the rows of its recordset in its order and filter.
struct SpreadsheetSource {
  QString title;     ///< "Report Results"
  QString fileName;  ///< suggested for a file, without date and extension; empty for the title
  cDataGrid& grid;   ///< used only while the window opens
};

/// Shows a copy of the rows beside the other windows, which stay usable; later changes there do not change the sheet.
/// The window deletes itself when it is closed.
///
/// Kept for each user: the ticks "ExcelHeaderRow" (a first row of headings) and "Excel2003" (the older format of
/// workbooks), the folder of the last file, and the window's position.
class frmSpreadsheet : public QDialog {
 public:
  frmSpreadsheet(SpreadsheetParts parts, QWidget* owner);
  ~frmSpreadsheet() override;

  /// Fills the sheet and shows it. The user may cancel a long filling and keeps the rows that were filled by then.
  void ShowSpreadsheet(const SpreadsheetSource& source);

  void done(int result) override;

 private:
  void Connect();
  void CopyColumns(const cDataGrid& grid);
  void SetUpSheet();
  void Populate();
  void ShowCaption();
  void LoadSettings();
  void SaveSettings();
  void Print();
  void ExportCsv();
  void ExportExcel();
  void CopySelection();
  [[nodiscard]] bool IsFilled() const { return sheet_->filled == rows_.RecordCount(); }
  [[nodiscard]] QString AskFile(const QString& title, const QString& filter, const QString& ending);
  [[nodiscard]] ExportOutcome Write(ExportFormat format, const QString& path);
  void Tell(const QString& text, MessageIcon icon);

  std::unique_ptr<Ui::frmSpreadsheet> ui_;
  SpreadsheetParts parts_;
  QString title_;
  QString fileName_;
  QSet<QString> hidden_;
  Recordset rows_;
  std::unique_ptr<ExportSheet> sheet_;
  std::unique_ptr<SpreadsheetModel> model_;
};

/// Opens the spreadsheet window over a grid and writes an event into the host's event log.
/// \return the window, which belongs to `owner`; null when it could not be shown (reported)
frmSpreadsheet* GenerateSpreadsheet(const SpreadsheetSource& source, const SpreadsheetParts& parts, QWidget* owner);

}  // namespace qbx
