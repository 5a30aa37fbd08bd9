#include "util/DateTime.h"

#include <gtest/gtest.h>

namespace {

TEST(DateTime, DefaultIsTheEmptyDate)
{
    const Util::DateTime empty;
    EXPECT_EQ(empty.get_Year(), 1);
    EXPECT_EQ(empty.get_Month(), 1);
    EXPECT_EQ(empty.get_Day(), 1);
    EXPECT_TRUE(empty.IsValid());
}

TEST(DateTime, NowIsTheCurrentLocalTime)
{
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    const Util::DateTime now = Util::DateTime::get_Now();
    EXPECT_GE(now.ToQDateTime(), QDateTime(before.date(), before.time()));
    EXPECT_EQ(now.get_Year(), QDate::currentDate().year());
}

TEST(DateTime, GeneralFormatShowsShortDateAndLongTime)
{
    const Util::DateTime value(2024, 3, 7, 14, 5, 9);
    const QLocale us(QLocale::English, QLocale::UnitedStates);
    const QString text = value.ToString(QStringLiteral("G"), us);
    EXPECT_TRUE(text.startsWith(QStringLiteral("3/7/24 2:05:09"))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral("PM"))) << text.toStdString();
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(value.ToString(QStringLiteral("G"), german), QStringLiteral("07.03.24 14:05:09"));
    EXPECT_EQ(value.ToString(QStringLiteral("yyyy-MM-dd HH:mm"), german),
              QStringLiteral("2024-03-07 14:05"));
}

TEST(DateTime, GeneralTextParsesBackInEveryLocale)
{
    const Util::DateTime value(2023, 11, 30, 23, 59, 58);
    for (const QLocale& locale :
         {QLocale(QLocale::English, QLocale::UnitedStates),
          QLocale(QLocale::German, QLocale::Germany), QLocale(QLocale::French, QLocale::France),
          QLocale(QLocale::Japanese, QLocale::Japan), QLocale::c()}) {
        const QString text = value.ToString(QStringLiteral("G"), locale);
        const auto parsed = Util::DateTime::Parse(text, locale);
        ASSERT_TRUE(parsed) << text.toStdString() << " in " << locale.name().toStdString();
        EXPECT_EQ(*parsed, value) << text.toStdString();
    }
}

TEST(DateTime, ParseRefusesWhatIsNotADate)
{
    EXPECT_FALSE(Util::DateTime::Parse(QString()));
    EXPECT_FALSE(Util::DateTime::Parse(QStringLiteral("   ")));
    EXPECT_FALSE(Util::DateTime::Parse(QStringLiteral("not a date")));
    EXPECT_FALSE(Util::DateTime::Parse(QStringLiteral("31/31/31 99:99")));
    const auto iso = Util::DateTime::Parse(QStringLiteral("2020-02-29T10:00:00"));
    ASSERT_TRUE(iso);
    EXPECT_EQ(*iso, Util::DateTime(2020, 2, 29, 10));
}

TEST(DateTime, OleDatesCountDaysFromTheEndOf1899)
{
    EXPECT_DOUBLE_EQ(Util::DateTime(1899, 12, 30).ToOleDate(), 0.0);
    EXPECT_DOUBLE_EQ(Util::DateTime(1900, 1, 1, 6).ToOleDate(), 2.25);
    // Before the epoch the day counts back but the hours forward.
    EXPECT_DOUBLE_EQ(Util::DateTime(1899, 12, 29, 6).ToOleDate(), -1.25);
    EXPECT_EQ(Util::DateTime::FromOleDate(-1.25), Util::DateTime(1899, 12, 29, 6));
    EXPECT_EQ(Util::DateTime::FromOleDate(0.0), Util::DateTime(1899, 12, 30));
    const Util::DateTime value(2024, 7, 1, 12, 30, 15);
    EXPECT_EQ(Util::DateTime::FromOleDate(value.ToOleDate()), value);
    EXPECT_FALSE(Util::DateTime::FromOleDate(1e300).IsValid());
}

TEST(DateTime, ComparesChronologically)
{
    const Util::DateTime a(2024, 1, 1, 23, 0);
    const Util::DateTime b(2024, 1, 2, 1, 0);
    EXPECT_LT(a, b);
    EXPECT_GT(b, a);
    EXPECT_LE(a, a);
    EXPECT_NE(a, b);
    EXPECT_LT(Util::DateTime(), a);
}

} // namespace
