#include "platform/ini_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QFile>

#include "platform/file_names.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

using test::TempFolder;

TEST(IniFile, ReadsAsTheHostProductDoes) {
  const TempFolder folder;
  const IniFile ini(folder.Write(
      QStringLiteral("QBX.INI"),
      "stray = line\r\n[Other]\r\nName=no\r\n  [ app ] more\r\n; Name=comment\r\n NAME \t= \"Two  words \" \r\n"
      "Name=second\r\nEmpty=\r\nSingle='it'\r\nEq=a=b\r\nno equals sign\r\nHalf=\"x\r\nLong=" +
          QByteArray(300, 'x') + "\r\n[App]\r\nLate=too late\r\n"));
  struct Case {
    const char* section;
    const char* key;
    QString value;
  };
  const Case cases[] = {
      {"App", "Name", QStringLiteral("Two  words ")},
      {"aPP", "nAME", QStringLiteral("Two  words ")},
      {"App", "Empty", QStringLiteral("default")},
      {"App", "Single", QStringLiteral("it")},
      {"App", "Eq", QStringLiteral("a=b")},
      {"App", "Half", QStringLiteral("\"x")},
      {"App", "Long", QString(255, u'x')},
      {"App", "Late", QStringLiteral("default")},
      {"App", "stray", QStringLiteral("default")},
      {"Nowhere", "Name", QStringLiteral("default")},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ini.Read(QString::fromLatin1(c.section), QString::fromLatin1(c.key), QStringLiteral("default")), c.value)
        << c.key;
  }
  EXPECT_EQ(IniFile(folder.File(QStringLiteral("none.ini")))
                .Read(QStringLiteral("App"), QStringLiteral("Name"), QStringLiteral("KO")),
            QStringLiteral("KO"));
}

TEST(IniFile, ReadsBothEncodings) {
  const TempFolder folder;
  const IniFile utf8(folder.Write(QStringLiteral("utf8.ini"), "\xEF\xBB\xBF[App]\nName=Bj\xC3\xB6rn \xE2\x82\xAC\n"));
  const IniFile windows(folder.Write(QStringLiteral("windows.ini"), "[App]\nName=Bj\xF6rn \x80\n"));
  for (const IniFile& ini : {utf8, windows}) {
    EXPECT_EQ(ini.Read(QStringLiteral("App"), QStringLiteral("Name")), QStringLiteral("Björn €"));
  }
}

TEST(IniFile, WritingChangesOneLineOnly) {
  struct Case {
    const char* before;
    const char* section;
    const char* key;
    QString value;
    const char* after;
  };
  const Case cases[] = {
      {"; top\r\n[App]\r\nname = old\r\nOther=1\r\n", "APP", "Name", QStringLiteral("new"),
       "; top\r\n[App]\r\nname = new\r\nOther=1\r\n"},
      {"[App]\nA=1\n\n[B]\nA=2\n", "App", "N", QStringLiteral("x"), "[App]\nA=1\nN=x\n\n[B]\nA=2\n"},
      {"[App]\nA=1", "Database", "Name", QStringLiteral("x"), "[App]\nA=1\n\n[Database]\nName=x\n"},
      {"[App]\nA=1", "App", "A", QStringLiteral("2"), "[App]\nA=2"},
      {"[App]\n", "App", "A", QStringLiteral("2"), "[App]\nA=2\n"},
      {"", "App", "A", QStringLiteral("ö"), "[App]\r\nA=\xC3\xB6\r\n"},
      {"[App]\nX=\xF6\n", "App", "A", QStringLiteral("ä€"), "[App]\nX=\xF6\nA=\xE4\x80\n"},
      {"[App]\n", "App", "A", QStringLiteral(" \"q\" "), "[App]\nA=\" \"q\" \"\n"},
  };
  const TempFolder folder;
  for (const Case& c : cases) {
    IniFile ini(folder.Write(QStringLiteral("QBX.INI"), c.before));
    EXPECT_TRUE(ini.Write(QString::fromLatin1(c.section), QString::fromLatin1(c.key), c.value)) << c.after;
    EXPECT_EQ(folder.Read(QStringLiteral("QBX.INI")), c.after);
    EXPECT_EQ(ini.Read(QString::fromLatin1(c.section), QString::fromLatin1(c.key)), c.value);
  }
}

TEST(IniFile, WhatCannotBeWrittenLeavesTheFileAlone) {
  const TempFolder folder;
  const QByteArray windows = "[App]\nX=\xF6\n";
  IniFile ini(folder.Write(QStringLiteral("QBX.INI"), windows));
  EXPECT_FALSE(ini.Write(QStringLiteral("App"), QStringLiteral("A"), QStringLiteral("Ω")));
  EXPECT_FALSE(ini.Write(QStringLiteral("App"), QStringLiteral("A"), QStringLiteral("1\r\n[Service]")));
  EXPECT_EQ(folder.Read(QStringLiteral("QBX.INI")), windows);
  const QByteArray wide("\xFF\xFE[\0A\0]\0", 8);
  IniFile utf16(folder.Write(QStringLiteral("wide.ini"), wide));
  EXPECT_FALSE(utf16.Write(QStringLiteral("App"), QStringLiteral("A"), QStringLiteral("1")));
  EXPECT_EQ(folder.Read(QStringLiteral("wide.ini")), wide);
  EXPECT_FALSE(IniFile(folder.File(QStringLiteral("no folder/QBX.INI")))
                   .Write(QStringLiteral("App"), QStringLiteral("A"), QStringLiteral("1")));
}

TEST(FileNames, AreFoundWithoutRegardToCase) {
  const TempFolder folder;
  folder.Write(QStringLiteral("qbx.Ini"), "");
  folder.Write(QStringLiteral("Reports/Labels.RPT"), "");
  folder.Write(QStringLiteral("Reports/labels.rpt"), "");
  struct Case {
    const char* name;
    const char* found;  ///< null: nothing
  };
  const Case cases[] = {{"QBX.INI", "qbx.Ini"},
                        {"reports\\labels.rpt", "Reports/labels.rpt"},
                        {"/REPORTS/Labels.RPT", "Reports/Labels.RPT"},
                        {"REPORTS", "Reports"},
                        {"Reports\\none.rpt", nullptr},
                        {"none/labels.rpt", nullptr},
                        {"", nullptr}};
  for (const Case& c : cases) {
    const std::optional<QString> found = FindFileNoCase(folder.Path(), QString::fromLatin1(c.name));
    EXPECT_EQ(found.value_or(QString()), c.found == nullptr ? QString() : folder.File(QString::fromLatin1(c.found)))
        << c.name;
  }
  EXPECT_EQ(PathNoCase(folder.Path(), QStringLiteral("QBX.INI")), folder.File(QStringLiteral("qbx.Ini")));
  EXPECT_EQ(PathNoCase(folder.Path(), QStringLiteral("New\\File.txt")), folder.File(QStringLiteral("New/File.txt")));
}

}  // namespace
}  // namespace qbx
