#include "base/DateTimeFormat.h"

#include <QRegularExpression>
#include <QTime>

#include "support/Raised.h"

namespace quarv {

namespace {

// The pattern without its quoted words.
QString FieldsOf(const QString& pattern) {
    return QString(pattern).remove(QRegularExpression(QStringLiteral("'[^']*'")));
}

}  // namespace

TEST(DateTimeFormat, EveryLocaleHasAFourDigitYearAndSecondsAndNoZone) {
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    ASSERT_GT(locales.size(), 100);
    for (const QLocale& locale : locales) {
        const DateTimeFormat& format = DateTimeFormat::Of(locale);
        const QString date = FieldsOf(format.date);
        const QString time = FieldsOf(format.time);
        EXPECT_EQ(date.count(u'y'), 4) << qPrintable(locale.name() + ' ' + format.date);
        EXPECT_TRUE(date.contains(u'M')) << qPrintable(locale.name() + ' ' + format.date);
        EXPECT_TRUE(date.contains(u'd')) << qPrintable(locale.name() + ' ' + format.date);
        EXPECT_EQ(time.count(u's'), 2) << qPrintable(locale.name() + ' ' + format.time);
        EXPECT_FALSE(time.contains(u't')) << qPrintable(locale.name() + ' ' + format.time);
    }
}

TEST(DateTimeFormat, ChangesWithTheLocale) {
    EXPECT_EQ(DateTimeFormat::Of(QLocale("de_DE")).date, "dd.MM.yyyy");
    EXPECT_EQ(DateTimeFormat::Of(QLocale("en_US")).date, "M/d/yyyy");
    EXPECT_EQ(DateTimeFormat::Of(QLocale("en_US")).time, "h:mm:ss AP");
    EXPECT_EQ(DateTimeFormat::Of(QLocale("de_DE")).time, "HH:mm:ss");
}

}  // namespace quarv
