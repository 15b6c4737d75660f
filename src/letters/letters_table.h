// The host's table of letters, which holds what this session is about to print.

#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include "database/statements.h"

namespace qbx {

/// One letter.
struct LetterRow {
  QString letter;       ///< merged, RTF
  QString nameAddress;  ///< lines separated by CR
  QString contact = {};
  QString telephone = {};
  QString mobile = {};
  QString vehicle = {};
};

/// Adds the letters of one session. Sessions do not disturb each other. The session's earlier letters are deleted
/// first, and all are deleted when they are no longer needed, because each is a customer's complete letter.
class LettersTable {
 public:
  /// \param session  marks the rows of this session
  LettersTable(Statements& statements, QString session) : statements_(statements), session_(std::move(session)) {}

  /// Days after which the letters of a killed session are deleted.
  static constexpr int kKept = 7;

  /// Deletes the letters of this session and old ones that other sessions left behind, and prepares for adding.
  /// \return false when it failed (already reported)
  [[nodiscard]] bool Begin(const QDate& today);
  /// Deletes the letters of this session, after their report was printed or closed.
  void Clear();
  /// \throws DatabaseError
  void Add(const LetterRow& row);
  /// The keys of the letters, in the order in which they were added.
  /// \throws DatabaseError
  [[nodiscard]] QStringList Keys();

 private:
  [[nodiscard]] bool Delete(const QString& session);
  void DeleteLeftBehind(const QDate& today);

  Statements& statements_;
  QString session_;
  Recordset letters_;
};

}  // namespace qbx
