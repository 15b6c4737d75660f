// The options of one user: how grids look and behave.

#pragma once

#include <QString>

#include "database/statements.h"
#include "diagnostics/diagnostics.h"

namespace qbx {

/// The options of one user, named as their columns. Colours are 24-bit RGB numbers (red in the lowest byte), font sizes
/// are in points.
struct UserOptions {
  QString UserId;
  int SORTED_COLUMN_COLOUR = 0;
  int FILTER_COLUMN_COLOUR = 0;
  int GRID_ODD_BACKCOLOUR = 0;
  int GRID_ODD_FORECOLOUR = 0;
  int GRID_EVEN_BACKCOLOUR = 0;
  int GRID_EVEN_FORECOLOUR = 0;
  QString GRID_HEADFONT;
  int GRID_HEADFONT_SIZE = 0;
  bool GRID_HEADFONT_BOLD = false;
  bool GRID_HEADFONT_ITALIC = false;
  bool GRID_HEADFONT_UNDERLINE = false;
  QString GRID_LINEFONT;
  int GRID_LINEFONT_SIZE = 0;
  bool GRID_LINEFONT_BOLD = false;
  bool GRID_LINEFONT_ITALIC = false;
  bool GRID_LINEFONT_UNDERLINE = false;
  bool SYSTEM_ADMIN = false;
  QString SECTION_GRID_LINEFONT;
  int SECTION_GRID_LINEFONT_SIZE = 0;
  bool SECTION_GRID_LINEFONT_UNDERLINE = false;
  bool SECTION_GRID_LINEFONT_ITALIC = false;
  bool SECTION_GRID_LINEFONT_BOLD = false;
  int SECTION_GRID_FOREGROUND = 0;
  int SECTION_GRID_BACKGROUND = 0;
  bool USE_BROWSE_COLOUR = false;
  bool USE_REQUIRED_COLOUR = false;
  bool CREATE_BROWSE_BUTTONS = false;
  bool ALWAYS_SHOW_GRID_BROWSE_BUTTONS = false;
  bool SHOW_EDIT_UPDATED_MESSAGE = false;
  bool DISPLAY_TOOLBAR_CAPTIONS = false;
  /// Printer for reports, empty for the system's default; a database without this column is valid.
  QString REPORT_PRINTER;
};

/// Reads the options of a user, and adds a row for a user who has none.
/// \param options  changed only when the whole row could be read
/// \return false on failure, after the user was shown message 221; the failing statement was reported before
bool sysLoadUserInfo(Statements& statements, Diagnostics diagnostics, const QString& user, UserOptions& options);

}  // namespace qbx
