// The spreadsheet window: rows of a grid to look at, print and save.

#pragma once

#include <QDialog>
#include <QSet>
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

/// What the window works with; the references must outlive it.
struct SpreadsheetParts {
  RegistryValues& registry;
  WindowLayout& layout;
  EventLog& events;
  Diagnostics diagnostics;
  Shell& shell;
  /// Prints rows without the columns named (fields in lower case).
  std::function<void(const Recordset& rows, const QSet<QString>& hidden)> print;
};

/// What is shown. The columns are those that the grid shows, in its order; the rows are read from the recordset, sorted and filtered as it is.
struct SpreadsheetSource {
  QString title;     ///< "Report Results"
  QString fileName;  ///< suggested for a file, without date and ending; empty: the title
  cDataGrid& grid;   ///< used while the window opens, not later
};

/// Shows a copy of the rows beside the other windows, which can be used meanwhile; what changes there afterwards does not change the sheet. The window deletes
/// itself when it is closed.
///
/// Two ticks are kept for each user: a first row of headings ("ExcelHeaderRow") and the older format of workbooks ("Excel2003"); so are the folder of the last file and
/// where the window stood.
class frmSpreadsheet : public QDialog {
 public:
  frmSpreadsheet(SpreadsheetParts parts, QWidget* owner);
  ~frmSpreadsheet() override;

  /// Fills the sheet and shows it. The user may cancel a long filling, and has what was filled until then.
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

/// Opens the spreadsheet window over a grid, and writes that into the host's event log.
/// \return the window, which belongs to `owner`; null when it could not be shown (reported)
frmSpreadsheet* GenerateSpreadsheet(const SpreadsheetSource& source, const SpreadsheetParts& parts, QWidget* owner);

}  // namespace qbx
