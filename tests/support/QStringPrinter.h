#pragma once

// Lets GoogleTest print QString values (and optionals and lists of them) as text in failure
// messages instead of as bytes.

#include <QString>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
