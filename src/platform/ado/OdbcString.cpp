#include "platform/ado/OdbcString.h"

#include <algorithm>

#include "platform/ado/ConnectProblems.h"

namespace quarv::ado {

namespace {

bool IsKeyword(const QString& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u' ' || c == u'_' || c == u'-');
    });
}

bool CanBeCarried(const QString& value) {
    return !value.contains(QStringLiteral("};")) && !value.contains(QChar(0)) &&
           value.isValidUtf16();
}

}  // namespace

OdbcString& OdbcString::Add(const QString& keyword, const QString& value) {
    if (!IsKeyword(keyword) || !CanBeCarried(value))
        throw MakeConnectError(ConnectProblem::ValueNotCarried, {keyword});
    // The driver unquotes a braced value only where ";" follows it, the last one included, and
    // takes everything up to the first "};" as it stands: a "}" in the value is not doubled.
    text_ += keyword + QStringLiteral("={") + value + QStringLiteral("};");
    keywords_ += keyword;
    return *this;
}

OdbcString& OdbcString::AddLoginValue(const QString& keyword, const QString& value) {
    constexpr qsizetype loginLimit = 128;
    if (value.size() > loginLimit) throw MakeConnectError(ConnectProblem::ValueTooLong, {keyword});
    return Add(keyword, value);
}

bool OdbcString::Has(const QString& keyword) const {
    return keywords_.contains(keyword, Qt::CaseInsensitive);
}

}  // namespace quarv::ado
