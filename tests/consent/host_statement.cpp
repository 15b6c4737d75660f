#include "consent/host_statement.h"

#include "util/text.h"

namespace qbx::consent {

HostStatement& HostStatement::operator<<(const Text& text) {
  return Add(text ? SqlQuoted(*text) : QStringLiteral("NULL"));
}

HostStatement& HostStatement::operator<<(const Number& number) {
  return Add(number ? QString::number(*number) : QStringLiteral("NULL"));
}

HostStatement& HostStatement::operator<<(const QDate& day) {
  return *this << (day.isValid() ? Text(day.toString(Qt::ISODate)) : Text());
}

HostStatement& HostStatement::operator<<(double value) {
  return Add(QString::number(value, 'f', 2));
}

Recordset HostStatement::Run() {
  const QStringList pieces = sql_.split(u'?');
  QString sql = pieces.first();
  for (qsizetype i = 1; i < pieces.size(); ++i)
    sql += values_.value(i - 1) + pieces[i];
  values_.clear();
  return Recordset::ReadAll(database_.Execute(sql));
}

HostStatement& HostStatement::Add(const QString& literal) {
  values_ += literal;
  return *this;
}

}  // namespace qbx::consent
