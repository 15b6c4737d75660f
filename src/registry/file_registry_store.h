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
/// The files may be edited by hand and by other processes while the program runs. A changed file is read again before
/// the next call; a change reads, changes and replaces the file under a lock. A missing file is an empty hive; the
/// first write makes it. A damaged file is never overwritten: every call fails and names the damaged line until
/// somebody mends it. Texts hold any character except NUL. A line break is written \r or \n, a quote \" and a backslash
/// \\.
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
  /// Tells whether a file has changed.
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
    bool fresh = false;  ///< whether `tree` is what the file held at `stamp`
    RegistryTree tree;
    QString error;  ///< why the file could not be read; empty when it could
  };

  [[nodiscard]] static FileStamp StampOf(const QString& path);
  Hive& HiveOf(RegistryHive hive) { return hive == RegistryHive::kCurrentUser ? user_ : machine_; }
  /// Reads the hive's file if it has changed since it was read last.
  static void Update(Hive& hive);
  template <typename Change>
  [[nodiscard]] QString ChangeHive(RegistryHive hive, const Change& change);

  QString folder_;
  int lockTimeout_;
  Hive machine_;
  Hive user_;
};

}  // namespace qbx
