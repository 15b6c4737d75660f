// The model of a garage: plain values, with which everything is compared.

#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <array>
#include <map>
#include <optional>
#include <vector>

namespace qbx::consent {

/// Nothing means the host's NULL.
using Text = std::optional<QString>;
using Number = std::optional<int>;

struct Customer {
  int key = 0;
  Text title, firstname, contact, mobile, email, address;
  QString lastname;  ///< different for each customer, so that a message shows its receiver
  int type = 0;      ///< position in `World::types` + 1, 0: none
  int source = 0;
  bool noMarketing = false;
  Number consent;  ///< nothing or 0 not asked, 1 consented, 2 opted out
  Number canSms, canEmail, canLetter;
};

struct Vehicle {
  int key = 0;
  QString registration;
  int customer = 0;  ///< 0: belongs to nobody
  Text make, model;
  Number year, mileage;
  std::array<QDate, 6> due;  ///< an invalid date: none
};

struct Invoice {
  int customer = 0;
  int kind = 0;  ///< 0: an invoice; other kinds are ignored
  QDate day;
  int pence = 0;
};

/// The options that decide who may be contacted.
struct Settings {
  bool onlyOptedIn = false;    ///< Only_Send_Comms_When_Opted_In
  bool usingPlatform = false;  ///< Using_Vrelo
};

struct World {
  std::map<int, Customer> customers;  ///< by key, without deleted ones
  std::vector<Vehicle> vehicles;
  std::vector<Invoice> invoices;
  QStringList types;
  QStringList sources;
  Settings settings;

  [[nodiscard]] const Customer* Find(int customer) const {
    const auto found = customers.find(customer);
    return found == customers.end() ? nullptr : &found->second;
  }
};

/// A NULL becomes an empty text, as everywhere except in SQL.
[[nodiscard]] inline QString Plain(const Text& text) {
  return text.value_or(QString());
}

/// Removes blanks at the end, which never count.
[[nodiscard]] inline QString WithoutTrailingBlanks(QString text) {
  while (text.endsWith(QLatin1Char(' ')))
    text.chop(1);
  return text;
}
[[nodiscard]] inline bool Same(const QString& a, const QString& b) {
  return WithoutTrailingBlanks(a).compare(WithoutTrailingBlanks(b), Qt::CaseInsensitive) == 0;
}
[[nodiscard]] inline QString WithoutBlanksAround(const QString& text) {
  qsizetype start = 0;
  while (start < text.size() && text[start] == QLatin1Char(' '))
    ++start;
  return WithoutTrailingBlanks(text.mid(start));
}

}  // namespace qbx::consent
