// docs/host-database.md says what the procedures are called with; what it says is held against their headers.

#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include "hostdb/host_database.h"

namespace qbx {
namespace {

QStringList All(const char* pattern, const QString& text) {
  QStringList found;
  for (auto all = QRegularExpression(QLatin1String(pattern)).globalMatch(text); all.hasNext();)
    found << all.next().captured();
  return found;
}

std::string Joined(const char* pattern, const QString& text) {
  return All(pattern, text).join(", ").toStdString();
}

constexpr char kParameter[] = R"(@\w+ \w+(\([\w,]+\))?( = ('[^']*'|[\w.-]+))?)";
constexpr char kName[] = R"(@\w+)";

TEST(ProcedureTable, AgreesWithTheHeaders) {
  QFile file(QStringLiteral(QBX_DOCS "host-database.md"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  QMap<QString, QString> documented;
  for (const QString& line : text.section("\n## Procedures", 1).split(u'\n')) {
    for (const QString& name : All(R"(proc_\w+)", line.section(u'|', 1, 1)))
      documented[name] = line.section(u'|', 2, 2);
  }
  const QString selection = text.section("## Selecting", 1).section("Who is", 0, 0);
  for (const ProcedureFile& procedure : BuiltInProcedures()) {
    const QString name = QString::fromUtf8(procedure.name);
    const QString header = QString::fromUtf8(procedure.header);
    if (name.startsWith("proc_Marketing_AddAll")) {
      EXPECT_EQ(Joined(kName, selection), Joined(kName, header)) << qPrintable(name);
    } else if (const QString cell = documented.value(name); cell.contains("fields") || cell.contains("selection")) {
      // Those of a campaign or of a selection stand once, elsewhere.
      for (const QString& parameter : All(kName, documented.take(name)))
        EXPECT_TRUE(All(kName, header).contains(parameter)) << qPrintable(name + u' ' + parameter);
    } else {
      EXPECT_EQ(Joined(kParameter, documented.take(name)), Joined(kParameter, header)) << qPrintable(name);
    }
  }
  EXPECT_TRUE(documented.isEmpty()) << "there is no " << qPrintable(documented.keys().join(u' '));
}

}  // namespace
}  // namespace qbx
