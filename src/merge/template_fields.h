// The fields of a template: which fields there are, which are unknown, and which stay empty.

#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

namespace qbx {

/// Which data the rows of a campaign have beside the customer's.
struct KnownData {
  bool vehicle = false;
  bool dueDate = false;
};

/// A merge field as it is written in a text, what it stands for, and its value for the sample customer.
struct FieldMeaning {
  QString field;
  QString meaning;
  QString example;
};
/// All ten merge fields, in the order in which they are replaced.
/// \param today  what "{currentdate}" shows
/// \param boatEdition  whether the meanings are in the words of the boat edition
[[nodiscard]] std::vector<FieldMeaning> FieldMeanings(QDate today, bool boatEdition);

/// The length of the field at the start of the text, with its braces; 0 when the text does not begin with a field. A
/// field is "{", a letter, up to 29 more letters, digits, blanks, "_" or "-", and "}". It need not be one of the ten.
/// In rich text both braces are escaped. Braces around anything else are plain text.
[[nodiscard]] qsizetype FieldLength(QStringView text, bool richText);

/// The place of a field in a template, including its braces.
struct FieldPlace {
  qsizetype start = 0;
  qsizetype length = 0;
};
/// All fields of a template, known or unknown, in its order.
[[nodiscard]] std::vector<FieldPlace> FieldPlaces(const QString& text);

/// The fields of a template that are none of the ten ("{contakt}"); the customer would get them unmerged.
/// \return each once, with plain braces, in the order of the template
[[nodiscard]] QStringList UnknownFields(const QString& text);

/// The merge fields of a template that stay empty for every row. Each is written as in `FieldMeanings` and listed once.
[[nodiscard]] QStringList EmptyFields(const QString& text, KnownData data);

}  // namespace qbx
