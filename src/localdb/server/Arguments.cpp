#include "localdb/server/Arguments.h"

#include <QLocale>
#include <QUuid>
#include <cmath>

#include "base/CodePage1252.h"
#include "localdb/server/MomentText.h"
#include "localdb/server/TypeMapping.h"
#include "localdb/tds/NumericValues.h"
#include "localdb/tds/TemporalValues.h"

namespace quarv::localdb::server {

namespace {

using engine::TypeKind;
using Content = std::span<const std::byte>;

constexpr int64_t DaysFrom0001To1900 = 693'595;
constexpr int64_t TicksOfMillisecond = MomentText::TicksOfSecond / 1000;
constexpr int64_t LastDay = 3'652'058;  // 9999-12-31

int64_t CheckedDays(int64_t daysSince0001) {
    if (daysSince0001 < 0 || daysSince0001 > LastDay) {
        throw tds::ProtocolError(tds::Fault::ValueTooLong, 0);
    }
    return daysSince0001;
}

int64_t CheckedTicks(int64_t ticksSince0001) {
    CheckedDays(ticksSince0001 / tds::TicksOfDay);
    return ticksSince0001;
}

QString TextOf(const MomentText& moment) {
    return QLatin1String(moment.View().data(), static_cast<qsizetype>(moment.View().size()));
}

// `ticks` are 100 ns since midnight.
QString DayAndTimeText(int64_t daysSince0001, int64_t ticks, int scale) {
    return TextOf(
        MomentText().DateTime(CheckedDays(daysSince0001) * tds::TicksOfDay + ticks, scale));
}

QString DateTimeText(Content content) {
    const int64_t all = tds::ReadDateTime(content);
    int64_t days = all / tds::ThreeHundredthsOfDay;
    int64_t rest = all % tds::ThreeHundredthsOfDay;
    if (rest < 0) {
        rest += tds::ThreeHundredthsOfDay;
        --days;
    }
    // To the nearest millisecond, from which the type's own rounding gives the same value again.
    const int64_t milliseconds = (rest * 10 + 1) / 3;
    return DayAndTimeText(days + DaysFrom0001To1900, milliseconds * TicksOfMillisecond, 3);
}

QString SmallDateTimeText(Content content) {
    const int64_t minutes = tds::ReadSmallDateTime(content);
    return DayAndTimeText(minutes / 1440 + DaysFrom0001To1900,
                          minutes % 1440 * MomentText::TicksOfMinute, 0);
}

QString DateTimeOffsetText(Content content, uint8_t scale) {
    const tds::OffsetTime value = tds::ReadDateTimeOffset(content, scale);
    const int64_t local = value.utcTicks + value.offsetMinutes * MomentText::TicksOfMinute;
    if (local < 0 || std::abs(value.offsetMinutes) > 14 * 60) {
        throw tds::ProtocolError(tds::Fault::ValueTooLong, 0);
    }
    return TextOf(MomentText().DateTime(CheckedTicks(local), scale).Offset(value.offsetMinutes));
}

QString FloatText(Content content) {
    const double value = tds::ReadFloat(content);
    if (!std::isfinite(value)) throw tds::ProtocolError(tds::Fault::ValueTooLong, 0);
    if (content.size() == 4) return QString::number(value, 'e', 8);
    return QString::number(value, 'e', QLocale::FloatingPointShortest);
}

QString MoneyText(Content content) {
    const int64_t value = tds::ReadMoney(content);
    Decimal decimal;
    decimal.negative = value < 0;
    decimal.magnitude =
        value < 0 ? UInt128{0} - static_cast<UInt128>(value) : static_cast<UInt128>(value);
    decimal.scale = 4;
    return decimal.ToText();
}

QString BinaryText(Content content) {
    return QStringLiteral("0x") +
           QString::fromLatin1(
               QByteArray::fromRawData(reinterpret_cast<const char*>(content.data()),
                                       static_cast<qsizetype>(content.size()))
                   .toHex()
                   .toUpper());
}

// The wire's bytes: three fields little-endian, then eight bytes as they stand.
QString GuidText(Content content) {
    tds::ByteReader reader(content);
    const uint32_t first = reader.U32();
    const uint16_t second = reader.U16();
    const uint16_t third = reader.U16();
    uchar rest[8];
    for (uchar& byte : rest) byte = reader.U8();
    const QUuid id(first, second, third, rest[0], rest[1], rest[2], rest[3], rest[4], rest[5],
                   rest[6], rest[7]);
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QString LiteralOf(const engine::SqlType& type, Content content) {
    switch (type.kind) {
        case TypeKind::Bit:
            return tds::ReadInteger(content) != 0 ? QStringLiteral("1") : QStringLiteral("0");
        case TypeKind::TinyInt:
        case TypeKind::SmallInt:
        case TypeKind::Int:
        case TypeKind::BigInt:
            return QString::number(tds::ReadInteger(content));
        case TypeKind::Real:
        case TypeKind::Float:
            return FloatText(content);
        case TypeKind::SmallMoney:
        case TypeKind::Money:
            return MoneyText(content);
        case TypeKind::Decimal:
        case TypeKind::Numeric:
            return tds::ReadDecimal(content, type.scale).ToText();
        case TypeKind::Char:
        case TypeKind::VarChar:
        case TypeKind::Text:
            return TextOfCp1252(content);
        case TypeKind::NChar:
        case TypeKind::NVarChar:
        case TypeKind::NText:
        case TypeKind::Xml:
            return tds::TextOfUtf16(content);
        case TypeKind::Binary:
        case TypeKind::VarBinary:
        case TypeKind::Image:
        case TypeKind::RowVersion:
            return BinaryText(content);
        case TypeKind::Date:
            return TextOf(MomentText().Date(CheckedDays(tds::ReadDate(content))));
        case TypeKind::Time:
            return TextOf(MomentText().Time(tds::ReadTime(content, type.scale), type.scale));
        case TypeKind::SmallDateTime:
            return SmallDateTimeText(content);
        case TypeKind::DateTime:
            return DateTimeText(content);
        case TypeKind::DateTime2:
            return TextOf(MomentText().DateTime(
                CheckedTicks(tds::ReadDateTime2(content, type.scale)), type.scale));
        case TypeKind::DateTimeOffset:
            return DateTimeOffsetText(content, type.scale);
        case TypeKind::UniqueIdentifier:
            return GuidText(content);
    }
    return {};
}

}  // namespace

engine::Argument ArgumentOf(const tds::RpcParameter& parameter) {
    engine::Argument argument;
    argument.name = parameter.name;
    argument.type = EngineTypeOf(parameter.type);
    argument.null = parameter.value.null;
    argument.output = (parameter.status & tds::RpcParameter::Output) != 0;
    argument.isDefault = (parameter.status & tds::RpcParameter::Default) != 0;
    if (!argument.null) argument.text = LiteralOf(argument.type, parameter.value.Bytes());
    return argument;
}

std::vector<engine::Argument> ArgumentsOf(const std::vector<tds::RpcParameter>& parameters) {
    std::vector<engine::Argument> arguments;
    arguments.reserve(parameters.size());
    for (const tds::RpcParameter& parameter : parameters)
        arguments.push_back(ArgumentOf(parameter));
    return arguments;
}

}  // namespace quarv::localdb::server
