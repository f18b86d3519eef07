#include "platform/forms/DataCellText.h"

#include <QLocale>
#include <algorithm>
#include <array>
#include <charconv>

#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "platform/forms/ItemText.h"

namespace quarv::forms {

namespace {

constexpr QChar Ellipsis(0x2026);
constexpr int MostToolTipLines = 40;

void AppendNothing(QString&, const Value&) {}

void AppendNull(QString& text, const Value&) {
    text += u"NULL";
}

void AppendBoolean(QString& text, const Value& value) {
    text += value.ToBoolean() ? u'1' : u'0';
}

void AppendInteger(QString& text, const Value& value) {
    std::array<char, 24> digits;
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value.ToInteger());
    Q_ASSERT(error == std::errc());
    text += QLatin1String(digits.data(), end - digits.data());
}

void AppendSingle(QString& text, const Value& value) {
    text += FloatText(static_cast<float>(value.ToDouble()), u'.');
}

void AppendFloating(QString& text, const Value& value) {
    text += FloatText(value.ToDouble(), u'.');
}

void AppendDecimal(QString& text, const Value& value) {
    text += value.AsDecimal().ToText();
}

void AppendText(QString& text, const Value& value) {
    text += value.Text();
}

void AppendDateTime(QString& text, const Value& value) {
    text += value.AsDateTime().ToIsoText();
}

void AppendHex(QString& text, const QByteArray& bytes, qint64 count) {
    constexpr char16_t Digits[] = u"0123456789ABCDEF";
    const qsizetype start = text.size();
    text.resize(start + 2 + 2 * count);
    QChar* place = text.data() + start;
    *place++ = u'0';
    *place++ = u'x';
    for (qint64 i = 0; i < count; ++i) {
        const auto byte = static_cast<quint8>(bytes.at(i));
        *place++ = Digits[byte >> 4];
        *place++ = Digits[byte & 15];
    }
}

void AppendBytes(QString& text, const Value& value) {
    AppendHex(text, value.Bytes(), value.Bytes().size());
}

[[noreturn]] void RefuseObject(QString&, const Value&) {
    throw RuntimeError(RuntimeError::TypeMismatch);
}

struct KindOfCell {
    CellLook look;
    void (*append)(QString&, const Value&);
};

// In the order of Value::Kind.
constexpr KindOfCell Kinds[] = {
    {CellLook::Text, AppendNothing},   {CellLook::Null, AppendNull},
    {CellLook::Text, AppendBoolean},   {CellLook::Number, AppendInteger},
    {CellLook::Number, AppendSingle},  {CellLook::Number, AppendFloating},
    {CellLook::Number, AppendDecimal}, {CellLook::Text, AppendText},
    {CellLook::Text, AppendDateTime},  {CellLook::Text, AppendBytes},
    {CellLook::Text, RefuseObject},
};

const KindOfCell& KindOf(const Value& value) {
    return Kinds[static_cast<std::size_t>(value.kind())];
}

QString StartOfText(const CellStart& cell, qint64 most) {
    const QString& text = cell.value.Text();
    qint64 kept = std::min<qint64>(text.size(), most);
    if (kept >= cell.length) return text;
    if (kept > 0 && text.at(kept - 1).isHighSurrogate()) --kept;
    return text.left(kept) + Ellipsis;
}

QString StartOfBytes(const CellStart& cell, qint64 most) {
    const QByteArray& bytes = cell.value.Bytes();
    const qint64 kept = std::min<qint64>(bytes.size(), most);
    QString text;
    AppendHex(text, bytes, kept);
    if (kept >= cell.length) return text;
    QLocale grouped = QLocale::c();
    grouped.setNumberOptions(QLocale::DefaultNumberOptions);
    return text + Ellipsis + QStringLiteral(" (%1 bytes)").arg(grouped.toString(cell.length));
}

QString StartOfCell(const CellStart& cell, const CellLimit& limit) {
    switch (cell.value.kind()) {
        case Value::Kind::Text:
            return StartOfText(cell, limit.units);
        case Value::Kind::Bytes:
            return StartOfBytes(cell, limit.bytes);
        default: {
            QString text;
            AppendCell(text, cell.value);
            return text;
        }
    }
}

}  // namespace

CellLook LookOf(const Value& value) {
    return KindOf(value).look;
}

QString ShownCell(const CellStart& cell, const CellLimit& limit) {
    const QString text = StartOfCell(cell, limit);
    return cell.value.kind() == Value::Kind::Text ? ShownText(text) : text;
}

QString ToolTipOfCell(const CellStart& cell) {
    QString text = StartOfCell(cell, ToolTipLimit);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    qsizetype end = -1;
    for (int line = 0; line < MostToolTipLines; ++line) {
        end = text.indexOf(u'\n', end + 1);
        if (end < 0) return text;
    }
    return text.left(end + 1) + Ellipsis;
}

void AppendCell(QString& text, const Value& value) {
    KindOf(value).append(text, value);
}

}  // namespace quarv::forms
