#include "registry/file_registry_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "platform/safe_file.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

using test::TempFolder;
using testing::ElementsAre;

constexpr RegistryHive kMachine = RegistryHive::kLocalMachine;
constexpr RegistryHive kUser = RegistryHive::kCurrentUser;
const char kHeader[] = "Windows Registry Editor Version 5.00\n";

QString TextOf(RegistryStore& store, RegistryHive hive, const QString& key, const QString& name) {
  QString error;
  const auto values = store.Values(hive, key, &error);
  EXPECT_EQ(error, QString());
  if (!values) return "(no key)";
  for (const RegistryValue& value : *values) {
    if (value.name == name) return value.data;
  }
  return "(no value)";
}

TEST(FileRegistryStore, KeepsEveryKindOfValue) {
  const TempFolder folder;
  const QString key = "Garage";
  const std::vector<RegistryValue> values = {
      {QString(), RegistryType::kText, "default"},
      {"Quotes \"and\" \\", RegistryType::kText, "C:\\new \"x\"\r\nsecond\rthird\nfourth\t; [x] ü€😀"},
      {"Empty", RegistryType::kText, QString("")},
      {"Number", RegistryType::kNumber, "4294967295"},
      {"Bytes", RegistryType::kBinary, "00ff7e"},
      {"No bytes", RegistryType::kBinary, QString("")},
  };
  FileRegistryStore store(folder.File("made by the store"));
  for (const RegistryHive hive : {kMachine, kUser}) {
    EXPECT_FALSE(store.KeyExists(hive, key));
    ASSERT_EQ(store.CreateKey(hive, key), QString());
    for (const RegistryValue& value : values)
      EXPECT_EQ(store.SetValue(hive, key, value), QString());
  }
  FileRegistryStore other(folder.File("made by the store"));
  for (const RegistryHive hive : {kMachine, kUser}) {
    QString error;
    const auto read = other.Values(hive, key, &error);
    ASSERT_TRUE(read) << error.toStdString();
    ASSERT_EQ(read->size(), values.size());
    for (std::size_t index = 0; index < values.size(); ++index) {
      EXPECT_EQ((*read)[index].name, values[index].name);
      EXPECT_EQ((*read)[index].type, values[index].type);
      EXPECT_EQ((*read)[index].data, values[index].data);
    }
  }
}

TEST(FileRegistryStore, KeysFollowTheRulesOfARegistry) {
  const TempFolder folder;
  FileRegistryStore store(folder.Path());
  EXPECT_NE(store.CreateKey(kUser, "A\\B"), QString()) << "the parent is missing";
  for (const char* key : {"A", "A\\Zebra", "A\\apple", "A\\Zebra\\x"})
    EXPECT_EQ(store.CreateKey(kUser, key), QString());
  EXPECT_EQ(store.CreateKey(kUser, "a\\ZEBRA"), QString()) << "it is there already";
  EXPECT_THAT(store.SubKeys(kUser, "a"), ElementsAre("Zebra", "apple"));
  EXPECT_NE(store.DeleteKey(kUser, "A\\Zebra"), QString()) << "it has a key below it";
  EXPECT_EQ(store.DeleteKey(kUser, "A\\ZEBRA\\X"), QString());
  EXPECT_EQ(store.DeleteKey(kUser, "A\\Zebra"), QString());
  EXPECT_THAT(store.SubKeys(kUser, "A"), ElementsAre("apple"));
  EXPECT_NE(store.DeleteKey(kUser, "A\\Zebra"), QString());

  EXPECT_EQ(store.SetValue(kUser, "A", {"Name", RegistryType::kText, "1"}), QString());
  EXPECT_EQ(store.SetValue(kUser, "A", {"NAME", RegistryType::kText, "2"}), QString());
  EXPECT_EQ(TextOf(store, kUser, "A", "Name"), "2");
  EXPECT_NE(store.SetValue(kUser, "Nowhere", {"Name", RegistryType::kText, {}}), QString());
  EXPECT_EQ(store.DeleteValue(kUser, "A", "nAME"), QString());
  EXPECT_NE(store.DeleteValue(kUser, "A", "Name"), QString());

  const QByteArray before = folder.Read("user.reg");
  EXPECT_NE(store.CreateKey(kUser, "A\\two\nlines"), QString());
  EXPECT_NE(store.SetValue(kUser, "A", {"N", RegistryType::kNumber, "-1"}), QString());
  EXPECT_NE(store.SetValue(kUser, "A", {"N", RegistryType::kBinary, "0"}), QString());
  EXPECT_NE(store.SetValue(kUser, "A", {"N", RegistryType::kText, QString(QChar(0))}), QString());
  EXPECT_EQ(folder.Read("user.reg"), before);
}

TEST(FileRegistryStore, ReadsAndKeepsWhatOthersWrote) {
  const TempFolder folder;
  folder.Write("machine.reg", QByteArray(kHeader).replace("\n", "\r\n") +
                                  "; our garage\r\n\r\n[hkey_local_machine\\SOFTWARE\\Korvel "
                                  "Manager\\Login]\r\n\"Server\"=\"PC\\\\SQL\"\r\n; do not touch\r\n"
                                  "\"Retries\"=dword:0000000a\r\n\"Path\"=hex(2):25,00,\\\r\n  "
                                  "41,00,00,00\r\n\"Multi\"=hex(7):61,00,00,00\r\n\"Two\"=\"a\r\nb\"\r\n@=\"d\"\r\n");
  FileRegistryStore store(folder.Path());
  const QString key = "Software\\Korvel Manager\\Login";
  EXPECT_EQ(TextOf(store, kMachine, key, "Server"), "PC\\SQL");
  EXPECT_EQ(TextOf(store, kMachine, key, "Retries"), "10");
  EXPECT_EQ(TextOf(store, kMachine, key, "Path"), "%A");
  EXPECT_EQ(TextOf(store, kMachine, key, "Two"), "a\r\nb");
  EXPECT_EQ(TextOf(store, kMachine, key, QString()), "d");
  ASSERT_EQ(store.SetValue(kMachine, key, {"Server", RegistryType::kText, "new"}), QString());
  EXPECT_EQ(folder.Read("machine.reg"),
            QByteArray(kHeader) +
                "; our garage\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE]\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Korvel Manager]\n\n"
                "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Korvel Manager\\Login]\n; do not "
                "touch\n\"Server\"=\"new\"\n\"Retries\"=dword:0000000a\n"
                "\"Path\"=hex(2):25,00,41,00,00,00\n\"Multi\"=hex(7):61,00,00,00\n\"Two\"=\"a\\r\\nb\"\n@=\"d\"\n");
}

TEST(FileRegistryStore, ADamagedFileIsNeverWrittenOver) {
  struct Case {
    QByteArray body;
    int line;
  };
  const Case cases[] = {{"\n[HKEY_LOCAL_MACHINE\\A]\n\"x\"=\"open\n", 4},
                        {"[HKEY_LOCAL_MACHINE\\A\n", 2},
                        {"[HKEY_CURRENT_USER\\A]\n", 2},
                        {"[HKEY_LOCAL_MACHINE\\A]\n\"x\"=\"1\"\n<<<<<<< mine\n", 4},
                        {"[HKEY_LOCAL_MACHINE\\A]\n\"x\"=dword:xyz\n", 3},
                        {"[HKEY_LOCAL_MACHINE\\A]\n\"x\"=hex:0,zz\n", 3},
                        {"[HKEY_LOCAL_MACHINE\\A]\n\"x\"=\"C:\\temp\"\n", 3},
                        {"[HKEY_LOCAL_MACHINE\\A]\n\"x\"=\"1\"\n\"X\"=\"2\"\n", 4},
                        {"[HKEY_LOCAL_MACHINE\\A]\n\"x\" \"1\"\n", 3},
                        {"[HKEY_LOCAL_MACHINE\\A]\n\"x\"=\"1\" more\n", 3},
                        {"[HKEY_LOCAL_MACHINE" + QByteArray("\\k").repeated(513) + "]\n", 2}};
  const TempFolder folder;
  FileRegistryStore store(folder.Path());
  for (const Case& c : cases) {
    const QByteArray damaged = kHeader + c.body;
    folder.Write("machine.reg", damaged);
    QString error;
    EXPECT_FALSE(store.Values(kMachine, "A", &error).has_value()) << c.body.toStdString();
    EXPECT_TRUE(error.contains(QString("line %1:").arg(c.line))) << error.toStdString();
    EXPECT_FALSE(store.KeyExists(kMachine, "A"));
    EXPECT_EQ(store.SetValue(kMachine, QString(), {"x", RegistryType::kText, {}}), error);
    EXPECT_EQ(folder.Read("machine.reg"), damaged);
  }
  folder.Write("machine.reg", QByteArray(kHeader) + "[HKEY_LOCAL_MACHINE\\A]\n\"x\"=\"mended\"\n");
  EXPECT_EQ(TextOf(store, kMachine, "A", "x"), "mended");
}

TEST(FileRegistryStore, WritersAtTheSameTimeLoseNothing) {
  const TempFolder folder;
  const auto write = [&folder](const QString& name) {
    FileRegistryStore store(folder.Path(), 60000);
    EXPECT_EQ(store.CreateKey(kUser, "K"), QString());
    for (int number = 0; number < 20; ++number) {
      EXPECT_EQ(store.SetValue(kUser, "K", {name + QString::number(number), RegistryType::kText, {}}), QString());
    }
  };
  std::thread other([&write] { write("b"); });
  write("a");
  other.join();
  FileRegistryStore store(folder.Path());
  QString error;
  EXPECT_EQ(store.Values(kUser, "K", &error)->size(), 40U);
  EXPECT_THAT(folder.Names(), ElementsAre("user.reg", "user.reg.lock"));
}

TEST(FileRegistryStore, AHeldLockIsReported) {
  const TempFolder folder;
  const FileLock lock(folder.File("user.reg.lock"), 0);
  ASSERT_TRUE(lock.Locked());
  FileRegistryStore store(folder.Path(), 20);
  EXPECT_NE(store.CreateKey(kUser, "K"), QString());
  EXPECT_EQ(store.CreateKey(kMachine, "K"), QString());
}

}  // namespace
}  // namespace qbx
