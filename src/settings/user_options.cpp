#include "settings/user_options.h"

#include <array>
#include <variant>

#include "diagnostics/message_catalogue.h"
#include "settings/member_value.h"
#include "util/text.h"

namespace qbx {
namespace {

struct UserKey {
  const char* name;
  std::variant<bool UserOptions::*, int UserOptions::*, QString UserOptions::*> member;
  bool mayBeMissing = false;
};

constexpr auto kUserKeys = std::to_array<UserKey>({
    {"UserId", &UserOptions::UserId},
    {"SORTED_COLUMN_COLOUR", &UserOptions::SORTED_COLUMN_COLOUR},
    {"FILTER_COLUMN_COLOUR", &UserOptions::FILTER_COLUMN_COLOUR},
    {"GRID_ODD_BACKCOLOUR", &UserOptions::GRID_ODD_BACKCOLOUR},
    {"GRID_ODD_FORECOLOUR", &UserOptions::GRID_ODD_FORECOLOUR},
    {"GRID_EVEN_BACKCOLOUR", &UserOptions::GRID_EVEN_BACKCOLOUR},
    {"GRID_EVEN_FORECOLOUR", &UserOptions::GRID_EVEN_FORECOLOUR},
    {"GRID_HEADFONT", &UserOptions::GRID_HEADFONT},
    {"GRID_HEADFONT_SIZE", &UserOptions::GRID_HEADFONT_SIZE},
    {"GRID_HEADFONT_BOLD", &UserOptions::GRID_HEADFONT_BOLD},
    {"GRID_HEADFONT_ITALIC", &UserOptions::GRID_HEADFONT_ITALIC},
    {"GRID_HEADFONT_UNDERLINE", &UserOptions::GRID_HEADFONT_UNDERLINE},
    {"GRID_LINEFONT", &UserOptions::GRID_LINEFONT},
    {"GRID_LINEFONT_SIZE", &UserOptions::GRID_LINEFONT_SIZE},
    {"GRID_LINEFONT_BOLD", &UserOptions::GRID_LINEFONT_BOLD},
    {"GRID_LINEFONT_ITALIC", &UserOptions::GRID_LINEFONT_ITALIC},
    {"GRID_LINEFONT_UNDERLINE", &UserOptions::GRID_LINEFONT_UNDERLINE},
    {"SYSTEM_ADMIN", &UserOptions::SYSTEM_ADMIN},
    {"SECTION_GRID_LINEFONT", &UserOptions::SECTION_GRID_LINEFONT},
    {"SECTION_GRID_LINEFONT_SIZE", &UserOptions::SECTION_GRID_LINEFONT_SIZE},
    {"SECTION_GRID_LINEFONT_UNDERLINE", &UserOptions::SECTION_GRID_LINEFONT_UNDERLINE},
    {"SECTION_GRID_LINEFONT_ITALIC", &UserOptions::SECTION_GRID_LINEFONT_ITALIC},
    {"SECTION_GRID_LINEFONT_BOLD", &UserOptions::SECTION_GRID_LINEFONT_BOLD},
    {"SECTION_GRID_FOREGROUND", &UserOptions::SECTION_GRID_FOREGROUND},
    {"SECTION_GRID_BACKGROUND", &UserOptions::SECTION_GRID_BACKGROUND},
    {"USE_BROWSE_COLOUR", &UserOptions::USE_BROWSE_COLOUR},
    {"USE_REQUIRED_COLOUR", &UserOptions::USE_REQUIRED_COLOUR},
    {"CREATE_BROWSE_BUTTONS", &UserOptions::CREATE_BROWSE_BUTTONS},
    {"ALWAYS_SHOW_GRID_BROWSE_BUTTONS", &UserOptions::ALWAYS_SHOW_GRID_BROWSE_BUTTONS},
    {"SHOW_EDIT_UPDATED_MESSAGE", &UserOptions::SHOW_EDIT_UPDATED_MESSAGE},
    {"DISPLAY_TOOLBAR_CAPTIONS", &UserOptions::DISPLAY_TOOLBAR_CAPTIONS},
    {"REPORT_PRINTER", &UserOptions::REPORT_PRINTER, true},
});

bool ReadKeys(const Recordset& row, UserOptions& options) {
  for (const UserKey& key : kUserKeys) {
    const QString name = QString::fromLatin1(key.name);
    if (row.ColumnIndex(name) < 0) {
      if (key.mayBeMissing) continue;
      return false;
    }
    const Value value = Statements::sysIsNull(row, name);
    AssignMember(options, key.member, value);
  }
  return true;
}

bool ReadUser(Statements& statements, const QString& user, UserOptions& options) {
  const QString argument = QStringLiteral(" ( %1 )").arg(SqlQuoted(user));
  const QString select = QStringLiteral("proc_selp__OptionsUser") + argument;
  Recordset row;
  if (statements.dbOpenRec(row, select)) return false;
  if (row.Eof()) {
    Statements::CloseRecordset(row);
    if (!statements.dbExecute(QStringLiteral("proc_addp__OptionsUser") + argument).Ok()) return false;
    if (statements.dbOpenRec(row, select) || row.Eof()) return false;
  }
  return ReadKeys(row, options);
}

}  // namespace

bool sysLoadUserInfo(Statements& statements, Diagnostics diagnostics, const QString& user, UserOptions& options) {
  UserOptions read;
  if (!ReadUser(statements, user, read)) {
    diagnostics.ui.ShowMessage({AppMessage(221), MessageIcon::kExclamation});
    return false;
  }
  options = read;
  return true;
}

}  // namespace qbx
