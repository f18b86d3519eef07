// DateTimeFormat: how a locale writes a date with a four-digit year and a time with seconds, as
// patterns for QLocale::toString. It knows no value.
#pragma once

#include <QLocale>
#include <QString>

namespace quarv {

struct DateTimeFormat {
    QString date;
    QString time;

    // The locale's patterns; the last locale asked for is kept, since whole columns use one. The
    // reference holds until the same thread asks for another locale.
    static const DateTimeFormat& Of(const QLocale& locale);
};

}  // namespace quarv
