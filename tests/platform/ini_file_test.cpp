#include "platform/ini_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/file_names.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

using test::TempFolder;

TEST(IniFile, ReadsAsTheHostProductDoes) {
  const TempFolder folder;
  const IniFile ini(folder.Write(
      "QBX.INI",
      "stray = line\r\n[Other]\r\nName=no\r\n  [ app ] more\r\n; Name=comment\r\n NAME \t= \"Two  words \" \r\n"
      "Name=second\r\nEmpty=\r\nSingle='it'\r\nEq=a=b\r\nno equals sign\r\nHalf=\"x\r\nLong=" +
          QByteArray(300, 'x') + "\r\n[App]\r\nLate=too late\r\n"));
  struct Case {
    const char* section;
    const char* key;
    QString value;
  };
  const Case cases[] = {
      {"App", "Name", "Two  words "},
      {"aPP", "nAME", "Two  words "},
      {"App", "Empty", "default"},
      {"App", "Single", "it"},
      {"App", "Eq", "a=b"},
      {"App", "Half", "\"x"},
      {"App", "Long", QString(255, u'x')},
      {"App", "Late", "default"},
      {"App", "stray", "default"},
      {"Nowhere", "Name", "default"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ini.Read(c.section, c.key, "default"), c.value) << c.key;
  }
  EXPECT_EQ(IniFile(folder.File("none.ini")).Read("App", "Name", "KO"), "KO");
}

TEST(IniFile, ReadsBothEncodings) {
  const TempFolder folder;
  const IniFile utf8(folder.Write("utf8.ini", "\xEF\xBB\xBF[App]\nName=Bj\xC3\xB6rn \xE2\x82\xAC\n"));
  const IniFile windows(folder.Write("windows.ini", "[App]\nName=Bj\xF6rn \x80\n"));
  for (const IniFile& ini : {utf8, windows}) {
    EXPECT_EQ(ini.Read("App", "Name"), "Björn €");
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
      {"; top\r\n[App]\r\nname = old\r\nOther=1\r\n", "APP", "Name", "new",
       "; top\r\n[App]\r\nname = new\r\nOther=1\r\n"},
      {"[App]\nA=1\n\n[B]\nA=2\n", "App", "N", "x", "[App]\nA=1\nN=x\n\n[B]\nA=2\n"},
      {"[App]\nA=1", "Database", "Name", "x", "[App]\nA=1\n\n[Database]\nName=x\n"},
      {"[App]\nA=1", "App", "A", "2", "[App]\nA=2"},
      {"[App]\n", "App", "A", "2", "[App]\nA=2\n"},
      {"", "App", "A", "ö", "[App]\r\nA=\xC3\xB6\r\n"},
      {"[App]\nX=\xF6\n", "App", "A", "ä€", "[App]\nX=\xF6\nA=\xE4\x80\n"},
      {"[App]\n", "App", "A", " \"q\" ", "[App]\nA=\" \"q\" \"\n"},
  };
  const TempFolder folder;
  for (const Case& c : cases) {
    IniFile ini(folder.Write("QBX.INI", c.before));
    EXPECT_TRUE(ini.Write(c.section, c.key, c.value)) << c.after;
    EXPECT_EQ(folder.Read("QBX.INI"), c.after);
    EXPECT_EQ(ini.Read(c.section, c.key), c.value);
  }
}

TEST(IniFile, WhatCannotBeWrittenLeavesTheFileAlone) {
  const TempFolder folder;
  const QByteArray windows = "[App]\nX=\xF6\n";
  IniFile ini(folder.Write("QBX.INI", windows));
  EXPECT_FALSE(ini.Write("App", "A", "Ω"));
  EXPECT_FALSE(ini.Write("App", "A", "1\r\n[Service]"));
  EXPECT_EQ(folder.Read("QBX.INI"), windows);
  const QByteArray wide("\xFF\xFE[\0A\0]\0", 8);
  IniFile utf16(folder.Write("wide.ini", wide));
  EXPECT_FALSE(utf16.Write("App", "A", "1"));
  EXPECT_EQ(folder.Read("wide.ini"), wide);
  EXPECT_FALSE(IniFile(folder.File("no folder/QBX.INI")).Write("App", "A", "1"));
  EXPECT_FALSE(IniFile(folder.Path()).Write("App", "A", "1"));
}

TEST(FileNames, AreFoundWithoutRegardToCase) {
  const TempFolder folder;
  folder.Write("qbx.Ini", "");
  folder.Write("Reports/Labels.RPT", "");
  folder.Write("Reports/labels.rpt", "");
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
    const std::optional<QString> found = FindFileNoCase(folder.Path(), c.name);
    EXPECT_EQ(found.value_or(QString()), c.found == nullptr ? QString() : folder.File(c.found)) << c.name;
  }
  EXPECT_EQ(PathNoCase(folder.Path(), "QBX.INI"), folder.File("qbx.Ini"));
  EXPECT_EQ(PathNoCase(folder.Path(), "New\\File.txt"), folder.File("New/File.txt"));
}

}  // namespace
}  // namespace qbx
