#include "views/TroveListDateKey_p.h"

#include "util/DateTime.h"

#include <QMutex>
#include <QMutexLocker>

#include <array>
#include <optional>

namespace TroveListDateKey {

namespace {

constexpr std::int64_t kMsecsPerDay = 86400000;

// What writing a value in a locale's general form and reading it back does to it, found from
// the form's pattern: which fields survive and how two-digit years come back.
struct LocaleForm
{
    QString localeName;
    QString pattern;
    bool twoDigitYear = false;
    std::int64_t unit = 1000; ///< the smallest time step the text shows, in msecs
    bool trusted = false;     ///< the shortcut below agrees with a real round trip
};

QString generalPattern(const QLocale& locale)
{
    QString time = locale.timeFormat(QLocale::LongFormat);
    time.remove(QLatin1Char('t'));
    return locale.dateFormat(QLocale::ShortFormat) + QLatin1Char(' ') + time.simplified();
}

std::int64_t smallestUnit(const QString& pattern)
{
    if (pattern.contains(QLatin1Char('z')))
        return 1;
    if (pattern.contains(QLatin1Char('s')))
        return 1000;
    if (pattern.contains(QLatin1Char('m')))
        return 60000;
    if (pattern.contains(QLatin1Char('h')) || pattern.contains(QLatin1Char('H')))
        return 3600000;
    return kMsecsPerDay;
}

bool hasTwoDigitYear(const QString& pattern)
{
    return pattern.contains(QLatin1String("yy")) && !pattern.contains(QLatin1String("yyy"));
}

std::int64_t floorDiv(std::int64_t a, std::int64_t b)
{
    const std::int64_t q = a / b;
    return (a % b != 0 && ((a < 0) != (b < 0))) ? q - 1 : q;
}

// The round trip computed from the value: the date's fields as the text shows them, read back
// the way the locale reader reads them (two-digit years as 19yy, then moved into the window).
std::int64_t shortcut(std::int64_t msecs, bool twoDigitYear, std::int64_t unit)
{
    const std::int64_t day = floorDiv(msecs, kMsecsPerDay);
    std::int64_t inDay = msecs - day * kMsecsPerDay;
    inDay -= inDay % unit;
    if (!twoDigitYear)
        return day * kMsecsPerDay + inDay;
    const QDate date = QDate::fromJulianDay(day);
    const int yy = ((date.year() % 100) + 100) % 100;
    int year = 1900 + yy;
    // 29 February of 1900 does not exist: such a text cannot be read at all.
    if (!QDate::isValid(year, date.month(), date.day()))
        return ZeroKey();
    if (year < 1930)
        year += 100;
    return QDate(year, date.month(), date.day()).toJulianDay() * kMsecsPerDay + inDay;
}

std::int64_t roundTrip(std::int64_t msecs, const QLocale& locale)
{
    return FromText(FromMsecs(msecs).ToString(QStringLiteral("G"), locale), locale);
}

LocaleForm examine(const QLocale& locale)
{
    LocaleForm form;
    form.localeName = locale.name();
    form.pattern = generalPattern(locale);
    form.twoDigitYear = hasTwoDigitYear(locale.dateFormat(QLocale::ShortFormat));
    form.unit = smallestUnit(form.pattern);
    // Dates that exercise each field and the year window, the leap day included.
    const std::array<Util::DateTime, 7> samples = {
        Util::DateTime(2023, 11, 14, 9, 26, 53, 480), Util::DateTime(1999, 1, 2, 23, 59, 59, 999),
        Util::DateTime(1925, 6, 15, 0, 0, 1),         Util::DateTime(2031, 12, 31, 12, 0, 0),
        Util::DateTime(2000, 2, 29, 13, 4, 5),        Util::DateTime(2004, 2, 29, 0, 30, 0),
        Util::DateTime(1899, 12, 30, 0, 0, 0),
    };
    form.trusted = true;
    for (const Util::DateTime& sample : samples) {
        const std::int64_t msecs = ToMsecs(sample);
        if (shortcut(msecs, form.twoDigitYear, form.unit) != roundTrip(msecs, locale)) {
            form.trusted = false;
            break;
        }
    }
    return form;
}

// The form of the locale asked about last; views ask from the UI thread, but the lock keeps
// the cache sound for any caller.
LocaleForm formFor(const QLocale& locale)
{
    static QMutex mutex;
    static LocaleForm cached;
    QMutexLocker lock(&mutex);
    if (cached.localeName != locale.name() || cached.pattern != generalPattern(locale))
        cached = examine(locale);
    return cached;
}

} // namespace

std::int64_t ToMsecs(const Util::DateTime& date)
{
    return date.Date().toJulianDay() * kMsecsPerDay + date.Time().msecsSinceStartOfDay();
}

Util::DateTime FromMsecs(std::int64_t msecs)
{
    const std::int64_t day = floorDiv(msecs, kMsecsPerDay);
    return Util::DateTime(QDate::fromJulianDay(day),
                          QTime::fromMSecsSinceStartOfDay(int(msecs - day * kMsecsPerDay)));
}

std::int64_t ZeroKey()
{
    static const std::int64_t zero = ToMsecs(Util::DateTime(1899, 12, 30));
    return zero;
}

std::int64_t FromText(const QString& text, const QLocale& locale)
{
    const std::optional<Util::DateTime> date = Util::DateTime::Parse(text, locale);
    return date && date->IsValid() ? ToMsecs(*date) : ZeroKey();
}

ValueKeys::ValueKeys(const QLocale& locale) : m_locale(locale)
{
    const LocaleForm form = formFor(locale);
    m_trusted = form.trusted;
    m_twoDigitYear = form.twoDigitYear;
    m_unit = form.unit;
}

std::int64_t ValueKeys::operator()(std::int64_t msecs) const
{
    return m_trusted ? shortcut(msecs, m_twoDigitYear, m_unit) : roundTrip(msecs, m_locale);
}

int Compare(std::int64_t a, std::int64_t b)
{
    const std::int64_t span = a - b;
    const std::int64_t seconds = (span + (span < 0 ? -500 : span > 0 ? 500 : 0)) / 1000;
    if ((seconds & 0xFFFFFFFF) == 0)
        return 0;
    return seconds < 0 ? -1 : 1;
}

} // namespace TroveListDateKey
