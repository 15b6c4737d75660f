// The fields of a template: which there are, and which do not do what they look like.

#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

namespace qbx {

/// What the rows of a campaign know beside the customer.
struct KnownData {
  bool vehicle = false;
  bool dueDate = false;
};

/// A merge field as it is written in a text, what it stands for, and what it is for the sample customer.
struct FieldMeaning {
  QString field;
  QString meaning;
  QString example;
};
/// All ten, in the order in which they are replaced.
/// \param today  what "{currentdate}" shows
[[nodiscard]] std::vector<FieldMeaning> FieldMeanings(QDate today);

/// How long the field is that a text begins with, braces and all; 0 where none does. A field is "{", a letter, then letters, digits, blanks, "_" or "-",
/// at most 30 characters of these, and "}", whether or not it is one of the ten; in rich text both braces are escaped. Braces round anything else are text.
[[nodiscard]] qsizetype FieldLength(QStringView text, bool richText);

/// Where a field stands in a template, with its braces.
struct FieldPlace {
  qsizetype start = 0;
  qsizetype length = 0;
};
/// All fields, known or not, in the order of the template.
[[nodiscard]] std::vector<FieldPlace> FieldPlaces(const QString& text);

/// The fields of a template that are none of the ten ("{contakt}"): they would reach the customer as they stand.
/// \return each once, as it is written, with plain braces, in the order of the template
[[nodiscard]] QStringList UnknownFields(const QString& text);

/// The merge fields of a template that stay empty for every row, written as in `FieldMeanings`, each once.
[[nodiscard]] QStringList EmptyFields(const QString& text, KnownData data);

}  // namespace qbx
