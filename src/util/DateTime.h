#pragma once

#include "kvxrefutil_export.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QTime>

#include <optional>
#include <string>

namespace Util {

/// A wall-clock date and time without a time zone, from 0001-01-01 on, as a file list shows it.
/// The default value is the empty date 0001-01-01 00:00:00.
class KVXREFUTIL_EXPORT DateTime
{
public:
    DateTime();
    DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
             int msec = 0);
    DateTime(const QDate& date, const QTime& time);
    /// Takes the local wall-clock reading of @p value.
    explicit DateTime(const QDateTime& value);

    static DateTime get_Now();

    int get_Year() const { return m_date.year(); }
    int get_Month() const { return m_date.month(); }
    int get_Day() const { return m_date.day(); }
    int get_Hour() const { return m_time.hour(); }
    int get_Minute() const { return m_time.minute(); }
    int get_Second() const { return m_time.second(); }
    const QDate& Date() const { return m_date; }
    const QTime& Time() const { return m_time; }
    bool IsValid() const { return m_date.isValid() && m_time.isValid(); }

    /// Text in the user's locale. Standard formats: "G" short date and long time (the usual
    /// file-date text), "g" short date and short time, "d" short date, "D" long date, "T" long
    /// time, "t" short time. Any other format is a QLocale pattern ("yyyy-MM-dd HH:mm").
    std::wstring ToString(const std::wstring& format) const;
    QString ToString(const QString& format, const QLocale& locale = QLocale()) const;

    /// The OLE automation date: days since 1899-12-30, the fraction being the time of day. Before
    /// that day the whole part counts back while the fraction still counts forward, so
    /// -1.25 is 1899-12-29 06:00.
    double ToOleDate() const;
    static DateTime FromOleDate(double oleDate);

    /// Reads a date text the way the user's locale writes it: the "G" text, the short and long
    /// date with or without a time, and ISO 8601. Two-digit years fall in 1930-2029.
    static std::optional<DateTime> Parse(const QString& text, const QLocale& locale = QLocale());

    QDateTime ToQDateTime() const { return QDateTime(m_date, m_time); }

    friend bool operator==(const DateTime& a, const DateTime& b)
    {
        return a.m_date == b.m_date && a.m_time == b.m_time;
    }
    friend bool operator!=(const DateTime& a, const DateTime& b) { return !(a == b); }
    friend bool operator<(const DateTime& a, const DateTime& b)
    {
        return a.m_date != b.m_date ? a.m_date < b.m_date : a.m_time < b.m_time;
    }
    friend bool operator>(const DateTime& a, const DateTime& b) { return b < a; }
    friend bool operator<=(const DateTime& a, const DateTime& b) { return !(b < a); }
    friend bool operator>=(const DateTime& a, const DateTime& b) { return !(a < b); }

private:
    QDate m_date;
    QTime m_time;
};

} // namespace Util
