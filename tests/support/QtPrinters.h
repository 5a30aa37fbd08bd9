#pragma once

#include <QRect>
#include <QString>

#include <ostream>

// Readable failure messages for the Qt values tests compare most (GoogleTest finds these by
// argument-dependent lookup; the Qt types live in the global namespace).

inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QRect& rect, std::ostream* os)
{
    *os << "QRect(" << rect.x() << ", " << rect.y() << ", " << rect.width() << " x "
        << rect.height() << ")";
}

inline void PrintTo(const QSize& size, std::ostream* os)
{
    *os << "QSize(" << size.width() << " x " << size.height() << ")";
}
