#include "consent/merging.h"

namespace qbx::consent {
namespace {

constexpr const char* kFields[] = {"{contact}", "{make}",      "{model}",    "{regno}",   "{duedate}",
                                   "{title}",   "{firstname}", "{lastname}", "{duetime}", "{currentdate}"};

QString DateText(const QDate& day) {
  return day.isValid() ? day.toString(QStringLiteral("dd/MM/yyyy")) : QString();
}

/// The name for a greeting, as the host makes it.
QString ContactOf(const Customer& customer) {
  QString contact = WithoutBlanksAround(Plain(customer.contact));
  if (!contact.isEmpty()) return contact;
  const QString title = WithoutBlanksAround(Plain(customer.title));
  const QString lastname = WithoutBlanksAround(customer.lastname);
  if (!title.isEmpty()) return title + u' ' + lastname;
  return WithoutBlanksAround(Plain(customer.firstname) + u' ' + lastname);
}

}  // namespace

FieldValues ValuesOf(const Picked& picked) {
  const Customer& customer = *picked.customer;
  FieldValues values{.title = Plain(customer.title),
                     .firstname = Plain(customer.firstname),
                     .lastname = customer.lastname,
                     .contact = ContactOf(customer),
                     .make = {},
                     .model = {},
                     .regno = {},
                     .duedate = DateText(picked.due)};
  if (values.contact.isEmpty()) values.contact = QStringLiteral("Customer");
  if (picked.vehicle == nullptr) return values;
  values.make = Plain(picked.vehicle->make);
  values.model = Plain(picked.vehicle->model);
  values.regno = picked.vehicle->registration;
  return values;
}

QString Merged(const QString& text, const FieldValues& values, const QDate& today) {
  const QString replacements[] = {values.contact, values.make,      values.model,    values.regno, values.duedate,
                                  values.title,   values.firstname, values.lastname, QString(),    DateText(today)};
  QString merged = text;
  for (size_t i = 0; i < std::size(kFields); ++i)
    merged.replace(QLatin1String(kFields[i]), replacements[i], Qt::CaseInsensitive);
  return merged;
}

bool HoldsField(const QString& text) {
  for (const char* field : kFields)
    if (text.contains(QLatin1String(field), Qt::CaseInsensitive)) return true;
  return false;
}

std::optional<QString> NumberOf(const QString& mobile) {
  QString number;
  for (const QChar c : WithoutBlanksAround(mobile)) {
    if (c == QLatin1Char(';') || c == QLatin1Char(',') || c == QLatin1Char('/')) break;
    if (c == QLatin1Char(' ')) continue;
    number += c;
  }
  const qsizetype bracket = number.indexOf(QLatin1Char('('), 5);
  if (bracket >= 0) number.truncate(bracket);
  QString digits;
  for (const QChar c : number)
    if (!c.isLetter()) digits += c;
  return digits.size() < 6 ? std::nullopt : std::optional(digits);
}

QStringList AddressesOf(const QString& email) {
  if (email.contains(QLatin1Char('\r')) || email.contains(QLatin1Char('\n'))) return {};
  QStringList addresses;
  for (const QString& part : email.split(QLatin1Char(';'))) {
    const QString address = WithoutBlanksAround(part);
    if (!address.isEmpty()) addresses += address;
  }
  return addresses;
}

}  // namespace qbx::consent
