#include "platform/forms/FileFilters.h"

namespace quarv::forms {

namespace {

constexpr char16_t AnyFile[] = u"*";

// Beyond these Qt would not see a pattern (QFileDialog::setNameFilters); each stands for itself.
bool QtTakes(QChar c) {
    if (c.unicode() < 0x80 && c.isLetterOrNumber()) return true;
    return QStringView(u"_.,*?+#-[]@{}/!<>$%&=^~:").contains(c);
}

QString OnePattern(QString pattern) {
    // To the platform this is every file, to Qt one with a dot in its name.
    if (pattern == u"*.*") return QString::fromUtf16(AnyFile);
    for (QChar& c : pattern)
        if (!QtTakes(c)) c = u'?';
    return pattern;
}

QString Patterns(const QString& written) {
    QStringList patterns;
    for (const QString& part : written.split(u';')) {
        const QString pattern = part.trimmed();
        if (!pattern.isEmpty()) patterns += OnePattern(pattern);
    }
    return patterns.isEmpty() ? QString::fromUtf16(AnyFile) : patterns.join(u' ');
}

QString NameFilter(const QString& description, const QString& written) {
    QString shown = description.simplified();
    const QString own = u'(' + written.trimmed() + u')';
    if (shown.endsWith(own)) shown.chop(own.size());
    return (shown.trimmed() + QStringLiteral(" (%1)").arg(Patterns(written))).trimmed();
}

}  // namespace

QStringList NameFilters(const QString& filter) {
    QStringList filters;
    if (filter.isEmpty()) return filters;
    const QStringList parts = filter.split(u'|');
    for (int i = 0; i < parts.size(); i += 2)
        filters += NameFilter(parts.at(i), parts.value(i + 1));
    return filters;
}

}  // namespace quarv::forms
