#include "views/dialogs/HistoryTexts.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

/// On the afternoon of 21 November 2026 in Berlin.
HistoryEntry entry(double duration, const QString& language) {
    HistoryEntry made;
    made.createdAt = QDateTime(QDate(2026, 11, 21), QTime(14, 7, 59), Qt::UTC);
    made.duration = duration;
    made.language = language;
    return made;
}

QString meta(const HistoryEntry& entry, const QLocale& locale) {
    return HistoryTexts::meta(entry, locale, QTimeZone("Europe/Berlin"));
}

const QLocale american(QLocale::English, QLocale::UnitedStates);

/// As a locale writes that afternoon.
QString date(const QLocale& locale) {
    return HistoryTexts::date(QDateTime(QDate(2026, 11, 21), QTime(15, 7, 59)), locale);
}

} // namespace

TEST(HistoryExcerpt, HasFiftyCharacters) {
    EXPECT_EQ(HistoryTexts::excerpt(QString(50, u'x')), QString(50, u'x'));
    EXPECT_EQ(HistoryTexts::excerpt(QString(51, u'x')), QString(50, u'x') + u"..."_s);
    EXPECT_EQ(HistoryTexts::excerpt(QString()), QString());
}

TEST(HistoryExcerpt, CountsWhatTheUserSeesAsCharacters) {
    const QString family = u"👩‍👩‍👧‍👦"_s;
    EXPECT_EQ(HistoryTexts::excerpt(family.repeated(50)), family.repeated(50));
    EXPECT_EQ(HistoryTexts::excerpt(family.repeated(51)), family.repeated(50) + u"..."_s);
}

TEST(HistoryExcerpt, IsOneLine) {
    EXPECT_EQ(HistoryTexts::excerpt(u"one\ntwo\u2028three"_s), u"one two three"_s);
}

TEST(HistoryMeta, TellsTimeDurationAndLanguage) {
    EXPECT_EQ(meta(entry(4.24, u"en"_s), american), u"Nov 21, 3:07 PM | 4.2s | en"_s);
    EXPECT_EQ(meta(entry(0, u"de"_s), american), u"Nov 21, 3:07 PM | 0.0s | de"_s);
    EXPECT_EQ(meta(entry(59.96, u"de"_s), american), u"Nov 21, 3:07 PM | 60.0s | de"_s);
}

TEST(HistoryMeta, HasTwoFieldsWithoutALanguage) {
    EXPECT_EQ(meta(entry(12.34, QString()), american), u"Nov 21, 3:07 PM | 12.3s"_s);
}

TEST(HistoryMeta, IsInTheTimeOfThePlace) {
    HistoryEntry night = entry(1, QString());
    night.createdAt = QDateTime(QDate(2026, 12, 31), QTime(23, 30), Qt::UTC);
    EXPECT_EQ(meta(night, american), u"Jan 1, 12:30 AM | 1.0s"_s);
}

TEST(HistoryDate, FollowsTheLocale) {
    EXPECT_EQ(date(QLocale(QLocale::English, QLocale::UnitedKingdom)), u"21 Nov, 15:07"_s);
    EXPECT_EQ(date(QLocale(QLocale::German, QLocale::Germany)), u"21. Nov., 15:07"_s);
    EXPECT_EQ(date(QLocale(QLocale::Japanese, QLocale::Japan)), u"11月21日, 15:07"_s);
    EXPECT_EQ(date(QLocale::c()), u"21 Nov, 15:07"_s);
}

TEST(HistoryDate, HasAMonthADayAHourAndAMinuteInEveryLocale) {
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    ASSERT_GT(locales.size(), 100);
    for (const QLocale& locale : locales) {
        const QString written = date(locale);
        SCOPED_TRACE((locale.name() + u": "_s + written).toStdString());
        EXPECT_TRUE(written.contains(locale.toString(21)));
        EXPECT_TRUE(written.contains(locale.toString(7)));
        EXPECT_FALSE(written.contains(locale.toString(59))) << "seconds";
        EXPECT_FALSE(written.contains(locale.toString(26))) << "the year";
    }
}
