#include "platform/drawing/Fonts.h"

#include <QFontDatabase>
#include <QHash>

namespace quarv::drawing {

namespace {

struct Substitute {
    const char16_t* name;
    const char16_t* sameWidths;
    QFontDatabase::SystemFont generic;
};

constexpr Substitute Substitutes[] = {
    {u"Microsoft Sans Serif", u"Liberation Sans", QFontDatabase::GeneralFont},
    {u"MS Sans Serif", u"Liberation Sans", QFontDatabase::GeneralFont},
    {u"Courier New", u"Liberation Mono", QFontDatabase::FixedFont},
};

QString FindFamily(const QString& name) {
    if (QFontDatabase::hasFamily(name)) return name;
    for (const Substitute& substitute : Substitutes) {
        if (name.compare(QString::fromUtf16(substitute.name), Qt::CaseInsensitive) != 0) continue;
        const QString same = QString::fromUtf16(substitute.sameWidths);
        if (QFontDatabase::hasFamily(same)) return same;
        return QFontDatabase::systemFont(substitute.generic).family();
    }
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

// Looking a family up asks the desktop's font configuration, which takes long; the answers stay.
QString FamilyFor(const QString& name) {
    static QHash<QString, QString> known;
    QString& family = known[name];
    if (family.isEmpty()) family = FindFamily(name);
    return family;
}

}  // namespace

QFont FontNamed(const QString& name, double points) {
    QFont font(FamilyFor(name));
    font.setPointSizeF(points);
    return font;
}

}  // namespace quarv::drawing
