#include "localdb/catalog/HelpText.h"

namespace quarv::localdb::catalog {

namespace {

constexpr qsizetype MaxPart = 255;

}  // namespace

QStringList HelpTextLines(const QString& source) {
    QStringList lines;
    qsizetype at = 0;
    while (at < source.size()) {
        const qsizetype lineFeed = source.indexOf(u'\n', at);
        const qsizetype lineEnd = lineFeed < 0 ? source.size() : lineFeed + 1;
        qsizetype end = std::min(lineEnd, at + MaxPart);
        if (end < lineEnd && source[end].isLowSurrogate() && source[end - 1].isHighSurrogate()) {
            --end;
        }
        lines += source.mid(at, end - at);
        at = end;
    }
    return lines;
}

}  // namespace quarv::localdb::catalog
