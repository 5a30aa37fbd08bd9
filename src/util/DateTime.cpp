#include "util/DateTime.h"

#include <cmath>

namespace Util {

namespace {

const QDate kOleEpoch(1899, 12, 30);
constexpr qint64 kMsecPerDay = 24LL * 60 * 60 * 1000;

// The locale's long time pattern without the time-zone field: file dates carry no zone.
QString longTimePattern(const QLocale& locale)
{
    QString pattern = locale.timeFormat(QLocale::LongFormat);
    pattern.remove(QLatin1Char('t'));
    return pattern.simplified();
}

QString shortTimePattern(const QLocale& locale)
{
    QString pattern = locale.timeFormat(QLocale::ShortFormat);
    pattern.remove(QLatin1Char('t'));
    return pattern.simplified();
}

QString patternFor(const QString& format, const QLocale& locale)
{
    const QString shortDate = locale.dateFormat(QLocale::ShortFormat);
    if (format == QLatin1String("G"))
        return shortDate + QLatin1Char(' ') + longTimePattern(locale);
    if (format == QLatin1String("g"))
        return shortDate + QLatin1Char(' ') + shortTimePattern(locale);
    if (format == QLatin1String("d"))
        return shortDate;
    if (format == QLatin1String("D"))
        return locale.dateFormat(QLocale::LongFormat);
    if (format == QLatin1String("T"))
        return longTimePattern(locale);
    if (format == QLatin1String("t"))
        return shortTimePattern(locale);
    return format;
}

bool hasTwoDigitYear(const QString& pattern)
{
    return pattern.contains(QLatin1String("yy")) && !pattern.contains(QLatin1String("yyy"));
}

} // namespace

DateTime::DateTime() : m_date(1, 1, 1), m_time(0, 0) {}

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second, int msec)
    : m_date(year, month, day), m_time(hour, minute, second, msec)
{}

DateTime::DateTime(const QDate& date, const QTime& time) : m_date(date), m_time(time) {}

DateTime::DateTime(const QDateTime& value)
    : m_date(value.toLocalTime().date()), m_time(value.toLocalTime().time())
{}

DateTime DateTime::get_Now()
{
    // Reading the local clock looks the time zone up each time, which costs a file check; hosts
    // create items (each stamped with the current time) by the hundred thousand, so the zone
    // offset is looked up once a second at most and applied to the cheap UTC reading.
    static thread_local qint64 checkedAt = -1;
    static thread_local int offsetSeconds = 0;
    const qint64 utc = QDateTime::currentMSecsSinceEpoch();
    if (checkedAt < 0 || utc < checkedAt || utc - checkedAt > 1000) {
        offsetSeconds = QDateTime::currentDateTime().offsetFromUtc();
        checkedAt = utc;
    }
    const QDateTime local =
        QDateTime::fromMSecsSinceEpoch(utc + qint64(offsetSeconds) * 1000, Qt::UTC);
    return DateTime(local.date(), local.time());
}

QString DateTime::ToString(const QString& format, const QLocale& locale) const
{
    if (!IsValid())
        return {};
    return locale.toString(ToQDateTime(), patternFor(format, locale));
}

std::wstring DateTime::ToString(const std::wstring& format) const
{
    return ToString(QString::fromStdWString(format)).toStdWString();
}

double DateTime::ToOleDate() const
{
    if (!IsValid())
        return 0.0;
    const qint64 days = kOleEpoch.daysTo(m_date);
    const double fraction = double(m_time.msecsSinceStartOfDay()) / double(kMsecPerDay);
    // Before the epoch the day counts back but the time of day still counts forward.
    return days >= 0 ? double(days) + fraction : double(days) - fraction;
}

DateTime DateTime::FromOleDate(double oleDate)
{
    if (!std::isfinite(oleDate) || std::fabs(oleDate) > 3.0e6)
        return DateTime(QDate(), QTime());
    const double whole = std::trunc(oleDate);
    double fraction = std::fabs(oleDate - whole);
    qint64 msecs = qint64(std::llround(fraction * double(kMsecPerDay)));
    qint64 days = qint64(whole);
    if (msecs >= kMsecPerDay) {
        msecs -= kMsecPerDay;
        days += oleDate >= 0 ? 1 : -1;
    }
    return DateTime(kOleEpoch.addDays(days), QTime::fromMSecsSinceStartOfDay(int(msecs)));
}

std::optional<DateTime> DateTime::Parse(const QString& input, const QLocale& locale)
{
    const QString text = input.simplified();
    if (text.isEmpty())
        return std::nullopt;

    const QString shortDate = locale.dateFormat(QLocale::ShortFormat);
    const QString longDate = locale.dateFormat(QLocale::LongFormat);
    const QString patterns[] = {
        patternFor(QStringLiteral("G"), locale),
        patternFor(QStringLiteral("g"), locale),
        longDate + QLatin1Char(' ') + longTimePattern(locale),
        longDate + QLatin1Char(' ') + shortTimePattern(locale),
        locale.dateTimeFormat(QLocale::ShortFormat),
        locale.dateTimeFormat(QLocale::LongFormat),
    };
    for (const QString& pattern : patterns) {
        QDateTime value = locale.toDateTime(text, pattern);
        if (!value.isValid())
            continue;
        if (hasTwoDigitYear(pattern) && value.date().year() < 1930)
            value = value.addYears(100);
        return DateTime(value.date(), value.time());
    }
    for (const QString& pattern : {shortDate, longDate}) {
        QDate date = locale.toDate(text, pattern);
        if (!date.isValid())
            continue;
        if (hasTwoDigitYear(pattern) && date.year() < 1930)
            date = date.addYears(100);
        return DateTime(date, QTime(0, 0));
    }
    const QDateTime iso = QDateTime::fromString(text, Qt::ISODate);
    if (iso.isValid())
        return DateTime(iso.date(), iso.time());
    const QDate isoDate = QDate::fromString(text, Qt::ISODate);
    if (isoDate.isValid())
        return DateTime(isoDate, QTime(0, 0));
    return std::nullopt;
}

} // namespace Util
