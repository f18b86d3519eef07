#include "platform/registry/tool/ValueText.h"

#include <QtEndian>
#include <algorithm>

#include "platform/registry/Quoting.h"
#include "platform/registry/RegTypes.h"
#include "platform/registry/Utf8.h"
#include "platform/registry/tool/ToolError.h"

namespace quarv::registry {

namespace {

constexpr struct {
    const char16_t* name;
    quint32 type;
} Types[] = {
    {u"REG_NONE", REG_NONE},     {u"REG_SZ", REG_SZ},       {u"REG_EXPAND_SZ", REG_EXPAND_SZ},
    {u"REG_BINARY", REG_BINARY}, {u"REG_DWORD", REG_DWORD}, {u"REG_MULTI_SZ", REG_MULTI_SZ},
    {u"REG_QWORD", REG_QWORD},
};

bool IsText(quint32 type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// How many bytes a number of that type has; 0 for what is no number.
qsizetype NumberSize(quint32 type) {
    return type == REG_DWORD ? 4 : type == REG_QWORD ? 8 : 0;
}

quint64 NumberOf(const QByteArray& data) {
    return data.size() == 4 ? qFromLittleEndian<quint32>(data.constData())
                            : qFromLittleEndian<quint64>(data.constData());
}

QString TextOfData(const QByteArray& data) {
    return FromUtf8(data.endsWith('\0') ? QByteArrayView(data).chopped(1) : QByteArrayView(data));
}

bool NeedsQuotes(const QString& text) {
    return text.startsWith(u'"') || std::any_of(text.cbegin(), text.cend(),
                                                [](QChar c) { return IsUnprintable(c.unicode()); });
}

QByteArray NumberData(qsizetype size, const QString& text) {
    bool ok = false;
    const quint64 number = text.startsWith(u"0x", Qt::CaseInsensitive)
                               ? text.sliced(2).toULongLong(&ok, 16)
                               : text.toULongLong(&ok, 10);
    if (!ok || (size == 4 && number > 0xffffffffu))
        throw ToolError{QStringLiteral("\"%1\" is no number of %2 bits").arg(text).arg(size * 8)};
    QByteArray data(size, '\0');
    if (size == 4)
        qToLittleEndian(static_cast<quint32>(number), data.data());
    else
        qToLittleEndian(number, data.data());
    return data;
}

}  // namespace

QString TypeName(quint32 type) {
    for (const auto& entry : Types)
        if (entry.type == type) return QString::fromUtf16(entry.name);
    return QStringLiteral("type %1").arg(type);
}

quint32 TypeOfName(const QString& name) {
    for (const auto& entry : Types)
        if (name.compare(QString::fromUtf16(entry.name), Qt::CaseInsensitive) == 0)
            return entry.type;
    bool ok = false;
    const quint32 type = name.toUInt(&ok);
    if (!ok) throw ToolError{QStringLiteral("\"%1\" is no type of a value").arg(name)};
    return type;
}

QString DataText(quint32 type, const QByteArray& data) {
    if (IsText(type)) return TextOfData(data);
    if (NumberSize(type) > 0 && data.size() == NumberSize(type))
        return QString::number(NumberOf(data));
    return QString::fromLatin1(data.toHex());
}

QString ListedText(quint32 type, const QByteArray& data) {
    if (NumberSize(type) > 0 && data.size() == NumberSize(type))
        return QStringLiteral("0x%1").arg(NumberOf(data), 0, 16);
    return OneLine(DataText(type, data));
}

QString OneLine(const QString& text) {
    return NeedsQuotes(text) ? Quoted(text) : text;
}

QByteArray DataOfText(quint32 type, const QString& text) {
    if (IsText(type)) {
        QByteArray data = text.toUtf8();
        if (type == REG_MULTI_SZ) {
            data.replace("\\0", QByteArray(1, '\0'));  // between two texts of the list
            if (!data.isEmpty()) data.append('\0');
        }
        return data.append('\0');
    }
    if (NumberSize(type) > 0) return NumberData(NumberSize(type), text);
    const QByteArray digits = text.toLatin1();
    const QByteArray data = QByteArray::fromHex(digits);
    if (digits.size() % 2 != 0 || data.toHex() != digits.toLower())
        throw ToolError{QStringLiteral("\"%1\" is not pairs of hexadecimal digits").arg(text)};
    return data;
}

}  // namespace quarv::registry
