#pragma once

// How the list orders its date cells. Not installed.

#include "kvxreftroveui_export.h"

#include <QLocale>
#include <QString>

#include <cstdint>

namespace Util {
class DateTime;
}

/// The date column sorts by what reading each cell's text as a date in the user's locale gives,
/// not by the value the text was written from: a short date with two-digit years reads back in
/// the 1930-2029 window (a 1925 file shown as "25" sorts as 2025), the general form has no
/// fractions of a second, and a text that cannot be read counts as the zero date (30 December
/// 1899). Keys are msecs since 1 January 4713 BC, like the values the rows keep, so that a key
/// is found once per cell and never per comparison.
namespace TroveListDateKey {

/// Msecs since 1 January 4713 BC of a wall-clock date and time, and back.
KVXREFTROVEUI_TEST_EXPORT std::int64_t ToMsecs(const Util::DateTime& date);
KVXREFTROVEUI_TEST_EXPORT Util::DateTime FromMsecs(std::int64_t msecs);

/// The key of the zero date, which every unreadable text gets.
KVXREFTROVEUI_TEST_EXPORT std::int64_t ZeroKey();

/// The key of a cell that shows @p text.
KVXREFTROVEUI_TEST_EXPORT std::int64_t FromText(const QString& text,
                                                const QLocale& locale = QLocale());

/// The keys of cells that show values in the general date-and-time form of one locale: the
/// same as FromText of those texts, found without writing and reading the texts whenever the
/// locale's forms allow it (checked once per locale). Make one per batch of values.
class KVXREFTROVEUI_TEST_EXPORT ValueKeys
{
public:
    explicit ValueKeys(const QLocale& locale = QLocale());
    std::int64_t operator()(std::int64_t msecs) const;
    /// False in a locale whose texts the shortcut cannot predict: every key then writes and
    /// reads the text, slowly but right.
    bool UsesShortcut() const { return m_trusted; }

private:
    QLocale m_locale;
    bool m_trusted;
    bool m_twoDigitYear;
    std::int64_t m_unit;
};

/// Orders two keys: -1, 0 or 1. The difference counts in whole seconds, rounded half away
/// from zero, so that dates less than half a second apart are equal; a difference whose low
/// 32 bits of seconds are all zero also counts as equal, as it always has.
KVXREFTROVEUI_TEST_EXPORT int Compare(std::int64_t a, std::int64_t b);

} // namespace TroveListDateKey
