#include "base/DateTimeFormat.h"

#include <QList>

namespace quarv {

namespace {

// A pattern is a row of fields (runs of one letter) and literals (quoted text, signs, blanks).
struct Piece {
    QString text;
    bool field;
};

QList<Piece> Split(const QString& pattern) {
    QList<Piece> pieces;
    bool quoted = false;
    for (QChar each : pattern) {
        if (each == u'\'') quoted = !quoted;
        const bool field = !quoted && each.isLetter();
        const bool same = !pieces.isEmpty() && pieces.last().field == field &&
                          (!field || pieces.last().text.front() == each);
        if (same) {
            pieces.last().text += each;
        } else {
            pieces.append({QString(each), field});
        }
    }
    return pieces;
}

QString Join(const QList<Piece>& pieces) {
    QString pattern;
    for (const Piece& piece : pieces) pattern += piece.text;
    return pattern;
}

QString WithFourDigitYear(const QString& pattern) {
    QList<Piece> pieces = Split(pattern);
    for (Piece& piece : pieces) {
        if (piece.field && piece.text == u"yy") piece.text = QStringLiteral("yyyy");
    }
    return Join(pieces);
}

qsizetype FindField(const QList<Piece>& pieces, char16_t letter) {
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        if (pieces[i].field && pieces[i].text.front() == letter) return i;
    }
    return -1;
}

// "H:mm" becomes "H:mm:ss": the seconds follow the minutes behind the same sign. Empty where hours
// and minutes are not parted by one sign.
QString WithSeconds(const QString& pattern) {
    QList<Piece> pieces = Split(pattern);
    if (FindField(pieces, u's') >= 0) return pattern;
    const qsizetype minutes = FindField(pieces, u'm');
    if (minutes < 1) return {};
    const Piece separator = pieces[minutes - 1];
    if (separator.field || separator.text.size() != 1) return {};
    pieces.insert(minutes + 1, separator);
    pieces.insert(minutes + 2, {QStringLiteral("ss"), true});
    return Join(pieces);
}

// The long form without its time zone.
QString WithoutZone(const QString& pattern) {
    QList<Piece> pieces = Split(pattern);
    pieces.removeIf([](const Piece& piece) { return piece.field && piece.text.front() == u't'; });
    return Join(pieces).remove(QStringLiteral("()")).trimmed();
}

}  // namespace

const DateTimeFormat& DateTimeFormat::Of(const QLocale& locale) {
    struct Kept {
        QLocale locale;
        DateTimeFormat format;
        bool filled = false;
    };
    thread_local Kept kept;
    if (!kept.filled || kept.locale != locale) {
        kept.locale = locale;
        kept.format.date = WithFourDigitYear(locale.dateFormat(QLocale::ShortFormat));
        kept.format.time = WithSeconds(locale.timeFormat(QLocale::ShortFormat));
        if (kept.format.time.isEmpty()) {
            kept.format.time = WithoutZone(locale.timeFormat(QLocale::LongFormat));
        }
        kept.filled = true;
    }
    return kept.format;
}

}  // namespace quarv
