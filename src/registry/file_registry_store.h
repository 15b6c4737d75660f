// The registry as a folder of text files.

#pragma once

#include <QString>

#include "registry/registry_store.h"
#include "registry/registry_tree.h"

namespace qbx {

/// One file per hive, `machine.reg` and `user.reg`, UTF-8, in the syntax of exported registry files:
///
///     Windows Registry Editor Version 5.00
///
///     [HKEY_LOCAL_MACHINE\SOFTWARE\Korvel Manager\Login]
///     "Server"="GARAGE-PC\\SQL"
///     "Retries"=dword:0000000a
///     ; lines like this one are kept
///
/// The files may be edited by hand and by other processes while the program runs: a changed file is read again before
/// the next question, and a change reads, changes and replaces the file under a lock. A missing file is an empty hive,
/// made at the first write. A damaged file is never written over: every call fails with the line that is wrong, until
/// somebody mends it. Texts hold any character except NUL; line breaks stand as \r and \n, quotes and backslashes
/// behind a backslash.
class FileRegistryStore final : public RegistryStore {
 public:
  /// \param folder       made at the first write when it is missing
  /// \param lockTimeout  how long a write waits for another process, in milliseconds
  explicit FileRegistryStore(const QString& folder, int lockTimeout = 5000);

  [[nodiscard]] bool KeyExists(RegistryHive hive, const QString& key) override;
  [[nodiscard]] std::optional<std::vector<RegistryValue>> Values(RegistryHive hive, const QString& key,
                                                                 QString* error) override;
  [[nodiscard]] QStringList SubKeys(RegistryHive hive, const QString& key) override;
  [[nodiscard]] QString CreateKey(RegistryHive hive, const QString& key) override;
  [[nodiscard]] QString DeleteKey(RegistryHive hive, const QString& key) override;
  [[nodiscard]] QString SetValue(RegistryHive hive, const QString& key, const RegistryValue& value) override;
  [[nodiscard]] QString DeleteValue(RegistryHive hive, const QString& key, const QString& name) override;

 private:
  /// Tells one state of a file from the next.
  struct FileStamp {
    quint64 device = 0;
    quint64 node = 0;
    qint64 size = -1;
    qint64 seconds = 0;
    qint64 nanoseconds = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
  };
  struct Hive {
    QString path;
    QString rootName;
    FileStamp stamp;
    bool fresh = false;  ///< `tree` is what the file held at `stamp`
    RegistryTree tree;
    QString error;  ///< why the file could not be read; empty when it was
  };

  [[nodiscard]] static FileStamp StampOf(const QString& path);
  Hive& HiveOf(RegistryHive hive) { return hive == RegistryHive::kCurrentUser ? user_ : machine_; }
  /// Reads the hive's file when it is not the one that was read last.
  static void Update(Hive& hive);
  template <typename Change>
  [[nodiscard]] QString ChangeHive(RegistryHive hive, const Change& change);

  QString folder_;
  int lockTimeout_;
  Hive machine_;
  Hive user_;
};

}  // namespace qbx
