#include "startup/command_line.h"

#include "settings/edition_names.h"
#include "startup/program_version.h"
#include "util/text.h"

namespace qbx {
namespace {

constexpr char kUserSwitch[] = "/userid:";
constexpr int kMaxInstance = 15;

constexpr char kTerminalHelp[] = R"(The marketing wizard. The host product starts it with the name of its user.

Usage: marketing /userid:"NAME" [/database:SUFFIX] [/instance:NAME]

  /userid:"NAME"     who works with it; a start without a user is refused
  /database:SUFFIX   work on the database whose name ends with _SUFFIX
  /instance:NAME     instance of the host product, part of the registry path
  --help, --version  print this, or the version

QBX_PROGRAM_FOLDER names the program folder (INI file, database, log), QBX_REGISTRY_FOLDER the folder of the registry.
marketingctl does the same work without a window: marketingctl --help.)";

/// The text after a switch: at most `length` characters, after leaving out `skip`. Nothing when the line lacks the
/// switch.
std::optional<QString> SwitchValue(const QString& line, const char* name, int length, int skip = 0) {
  const QString text = QString::fromLatin1(name);
  const qsizetype at = line.indexOf(text, 0, Qt::CaseInsensitive);
  if (at < 0) return std::nullopt;
  return TrimBlanks(line.mid(at + text.size() + skip, length));
}

QString UpTo(const QString& text, QLatin1Char stop) {
  const qsizetype at = text.indexOf(stop);
  return at < 0 ? text : text.left(at);
}

}  // namespace

std::optional<QString> TerminalAnswer(const QStringList& arguments) {
  if (arguments.contains(QStringLiteral("--version"))) return QStringLiteral("marketing ") + ProgramVersion();
  if (!arguments.contains(QStringLiteral("--help")) && !arguments.contains(QStringLiteral("-h"))) return std::nullopt;
  return QString::fromLatin1(kTerminalHelp);
}

QString InstanceName(const QString& text) {
  return UpTo(TrimBlanks(CutText(text, kMaxInstance)), QLatin1Char(' ')).toUpper();
}

QString JoinCommandLine(const QStringList& arguments) {
  const QString user = QString::fromLatin1(kUserSwitch);
  QStringList parts;
  for (const QString& argument : arguments) {
    const bool bare =
        argument.startsWith(user, Qt::CaseInsensitive) && argument.mid(user.size(), 1) != QStringLiteral("\"");
    parts.append(bare ? argument.left(user.size()) + QLatin1Char('"') + argument.mid(user.size()) + QLatin1Char('"')
                      : argument);
  }
  return parts.join(QLatin1Char(' '));
}

void ParseCommandLine(StartupValues& startup, UserInterface& ui) {
  const QString line = startup.commandLine;
  if (line.contains(QStringLiteral("/?"))) {
    ui.ShowMessage(
        {.text = QStringLiteral(
             "Command line options: /Backup /ReIndex /Silent /File:QBX.DAT\r\rCommand line parameters need to be passed in the order shown above."),
         .icon = MessageIcon::kInformation,
         .title = QString::fromLatin1(kProgramTitle)});
    return;
  }
  const auto database = SwitchValue(line, "/database:", 25);
  const auto instance = SwitchValue(line, "/instance:", kMaxInstance);
  const auto user = SwitchValue(line, kUserSwitch, 30, 1);  // 1: leaves out the quote before the name
  if (database) startup.DatabaseSuffix = QLatin1Char('_') + UpTo(*database, QLatin1Char(' '));
  if (instance) startup.instance = InstanceName(*instance);
  if (user) startup.user = CutText(UpTo(*user, QLatin1Char('"')), kMaxUser);
  if (database || instance) WorkOutEditionNames(startup);
  if (database || instance || user) startup.commandLine.clear();
}

}  // namespace qbx
