// How texts look in the message of a failed test.

#pragma once

#include <QString>
#include <ostream>

/// GoogleTest finds this by its name, and would print a QString unit by unit without it.
inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}
