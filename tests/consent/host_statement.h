// A statement of the host product, on whatever database the program works on.

#pragma once

#include "consent/world.h"
#include "database/recordset.h"

namespace qbx::consent {

/// Its values stand for the question marks, from the left. It can run again with others.
class HostStatement {
 public:
  HostStatement(Session& database, const char* sql) : database_(database), sql_(QString::fromLatin1(sql)) {}

  HostStatement& operator<<(const Text& text);
  HostStatement& operator<<(const Number& number);
  HostStatement& operator<<(const QDate& day);
  HostStatement& operator<<(double value);
  /// \return its rows
  Recordset Run();

 private:
  HostStatement& Add(const QString& literal);

  Session& database_;
  QString sql_;
  QStringList values_;
};

}  // namespace qbx::consent
