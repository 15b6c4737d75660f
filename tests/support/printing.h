// Shows texts in the messages of failed tests.

#pragma once

#include <QString>
#include <ostream>

/// GoogleTest calls this by its name. Without it, it would print each unit of a QString as a number.
inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}
