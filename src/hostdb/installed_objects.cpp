#include "hostdb/installed_objects.h"

#include <sqlite3.h>

#include <QCryptographicHash>
#include <QMap>
#include <algorithm>

#include "hostdb/embedded_sql.h"
#include "hostdb/host_database.h"
#include "hostdb/host_file.h"

namespace qbx {
namespace {

const QByteArray kTrigger = "trigger";
const QByteArray kProcedure = "procedure";

/// The fingerprint of the text of every installed object, by its kind and its name in lower case.
using Installed = QMap<QPair<QByteArray, QByteArray>, QByteArray>;

QByteArray Fingerprint(const QByteArray& text) {
  return QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex();
}

QPair<QByteArray, QByteArray> KeyOf(const QByteArray& kind, const QByteArray& name) {
  return {kind, name.toLower()};
}

std::vector<SchemaObject> ReadObjects(sqlite3* database) {
  std::vector<SchemaObject> objects;
  SqliteStatement read(
      database,
      "SELECT type, name, tbl_name, sql FROM sqlite_master WHERE type IN ('view', 'trigger') ORDER BY type DESC, rowid");
  while (read.Step())
    objects.push_back({read.TextAt(0), read.TextAt(1), read.TextAt(2), read.TextAt(3)});
  return objects;
}

/// The views and triggers of this program.
std::vector<SchemaObject> OwnObjects() {
  const SqliteFile scratch = OpenHostFile(QStringLiteral(":memory:"));
  for (const EmbeddedSql& file : SchemaFiles())
    if (file.name != kIndexFile) ExecuteSql(scratch.Handle(), file.text);
  return ReadObjects(scratch.Handle());
}

Installed ReadInstalled(sqlite3* database) {
  Installed installed;
  SqliteStatement read(database, "SELECT Kind, Name, Fingerprint FROM _Installed");
  while (read.Step())
    installed.insert(KeyOf(read.TextAt(0), read.TextAt(1)), read.TextAt(2));
  return installed;
}

/// Compares the texts of the program with the texts that it installed last, and remembers the new ones.
class Renewal {
 public:
  explicit Renewal(sqlite3* database)
      : before_(ReadInstalled(database)),
        remember_(
            database,
            "INSERT INTO _Installed (Kind, Name, Fingerprint) VALUES (?, ?, ?) ON CONFLICT (Kind, Name) DO UPDATE SET Fingerprint = excluded.Fingerprint"),
        forget_(database, "DELETE FROM _Installed WHERE Kind = ? AND Name = ?") {}

  /// Whether the text differs from the one installed last. The new text then counts as installed.
  [[nodiscard]] bool IsNew(const QByteArray& kind, const QByteArray& name, const QByteArray& text) {
    const QByteArray fingerprint = Fingerprint(text);
    if (before_.take(KeyOf(kind, name)) == fingerprint) return false;
    remember_.Add(kind.toStdString()).Add(name.toStdString()).Add(fingerprint.toStdString()).Run();
    return true;
  }

  /// Kinds and names of the installed objects that `IsNew` was not asked for. They no longer count as installed.
  [[nodiscard]] QList<QPair<QByteArray, QByteArray>> Gone() {
    for (const auto& [kind, name] : before_.keys())
      forget_.Add(kind.toStdString()).Add(name.toStdString()).Run();
    return before_.keys();
  }

 private:
  Installed before_;
  SqliteStatement remember_;
  SqliteStatement forget_;
};

void Take(std::vector<SchemaObject>& objects, const QByteArray& kind, const QByteArray& name) {
  std::erase_if(objects, [&](const SchemaObject& object) {
    return object.kind == kind && object.name.compare(name, Qt::CaseInsensitive) == 0;
  });
}

void RenewProcedures(sqlite3* database, Renewal& renewal, int number) {
  SqliteStatement store(
      database,
      "INSERT INTO _Procedures (Name, Header, Body, Version) VALUES (?, ?, ?, ?) ON CONFLICT (Name) DO UPDATE SET Header = excluded.Header, Body = excluded.Body, Version = excluded.Version");
  for (const ProcedureFile& procedure : BuiltInProcedures()) {
    if (!renewal.IsNew(kProcedure, procedure.name, procedure.header + '\n' + procedure.body)) continue;
    store.Add(procedure.name.toStdString())
        .Add(procedure.header.toStdString())
        .Add(procedure.body.toStdString())
        .Add(qint64{number})
        .Run();
  }
}

bool HasTable(sqlite3* database, const QByteArray& name) {
  SqliteStatement find(database,
                       "SELECT 1 FROM sqlite_master WHERE type IN ('table', 'view') AND lower(name) = lower(?)");
  return find.Add(name.toStdString()).Step();
}

}  // namespace

std::vector<SchemaObject> TakeObjectsAside(sqlite3* database) {
  std::vector<SchemaObject> objects = ReadObjects(database);
  // Triggers first, because dropping a view drops its triggers.
  for (auto object = objects.rbegin(); object != objects.rend(); ++object) {
    const QByteArray quoted = '"' + QByteArray(object->name).replace("\"", "\"\"") + '"';
    ExecuteSql(database, QByteArray("DROP " + object->kind + " " + quoted).constData());
  }
  return objects;
}

void PutObjectsBack(sqlite3* database, std::vector<SchemaObject> aside, int number) {
  Renewal renewal(database);
  for (SchemaObject& own : OwnObjects()) {
    if (!renewal.IsNew(own.kind, own.name, own.text)) continue;
    Take(aside, own.kind, own.name);
    aside.push_back(std::move(own));
  }
  RenewProcedures(database, renewal, number);
  SqliteStatement takeOut(database, "DELETE FROM _Procedures WHERE Name = ?");
  for (const auto& [kind, name] : renewal.Gone()) {
    if (kind == kProcedure) takeOut.Add(name.toStdString()).Run();
    Take(aside, kind, name);
  }
  std::stable_partition(aside.begin(), aside.end(), [](const SchemaObject& object) { return object.kind != kTrigger; });
  for (const SchemaObject& object : aside)
    if (object.kind != kTrigger || HasTable(database, object.table)) ExecuteSql(database, object.text.constData());
}

}  // namespace qbx
