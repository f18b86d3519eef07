#include "platform/registry/Quoting.h"

namespace quarv::registry {

bool IsUnprintable(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7f && unit < 0xa0) || unit == 0x2028 || unit == 0x2029 ||
           unit == 0xfeff;
}

QString Quoted(const QString& text) {
    QString quoted(u'"');
    quoted.reserve(text.size() + 2);
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        if (unit == u'"' || unit == u'\\')
            quoted.append(u'\\').append(c);
        else if (unit == u'\n')
            quoted.append(u"\\n");
        else if (unit == u'\r')
            quoted.append(u"\\r");
        else if (unit == u'\t')
            quoted.append(u"\\t");
        else if (IsUnprintable(unit))
            quoted.append(u"\\u{").append(QString::number(unit, 16)).append(u'}');
        else
            quoted.append(c);
    }
    return quoted.append(u'"');
}

}  // namespace quarv::registry
