// Conversions to the date and time kinds, and between them and bytes.
#include "localdb/engine/Conversion.h"
#include "localdb/engine/ConversionJob.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TextNumber.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

using Job = ConversionJob;

constexpr int64_t ThirdsPerDay = 25'920'000;  // of 1/300 s
constexpr int64_t MinutesPerDay = 1440;

bool IsOldKind(TypeKind kind) {
    return kind == TypeKind::DateTime || kind == TypeKind::SmallDateTime;
}

// A day that does not exist is out of range for the old kinds; everything else is no moment.
[[noreturn]] void RaiseNoMoment(const Job& job) {
    const bool tooFine = Moment::Parse(job.value.text).has_value();
    if (IsOldKind(job.to.kind) && !tooFine && TextNumber::LooksLikeDate(job.value.text)) {
        throw SqlError(242, {job.from.Name(), job.to.Name()});
    }
    throw SqlError(job.to.kind == TypeKind::SmallDateTime ? 295 : 241);
}

SqlValue StoredAs(const Moment& moment, const Job& job) {
    const std::optional<int64_t> stored = moment.Store(job.to);
    if (!stored) throw SqlError(242, {job.from.Name(), job.to.Name()});
    SqlValue value = SqlValue::Integer(*stored);
    if (job.to.kind == TypeKind::DateTimeOffset) value.offset = static_cast<int16_t>(moment.offset);
    return value;
}

Moment FromMoment(const Job& job) {
    const bool finer = HasTimeScale(job.to.kind);
    Moment moment = finer ? Moment::LoadFully(job.from.kind, job.value.integer, job.value.offset)
                          : Moment::Load(job.from.kind, job.value.integer, job.value.offset);
    if (job.to.kind != TypeKind::DateTimeOffset) moment.offset = 0;
    return moment;
}

std::string LittleEndian(uint64_t number, size_t size) {
    std::string bytes;
    for (size_t i = 0; i < size; ++i, number >>= 8) bytes += static_cast<char>(number & 0xFF);
    return bytes;
}

std::string BigEndian(uint64_t number, size_t size) {
    std::string bytes = LittleEndian(number, size);
    return {bytes.rbegin(), bytes.rend()};
}

uint64_t FromLittleEndian(std::string_view bytes) {
    uint64_t number = 0;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
        number = number << 8 | static_cast<unsigned char>(*byte);
    }
    return number;
}

int64_t UnitOf(int scale) {
    int64_t unit = 1;
    for (; scale < 7; ++scale) unit *= 10;
    return unit;
}

size_t ClockBytes(int scale) {
    return scale <= 2 ? 3 : scale <= 4 ? 4 : 5;
}

// The old kinds: days and the clock's own unit, each half of the bytes, greatest byte first.
SqlValue OldMomentOfBytes(const Job& job) {
    const bool small = job.to.kind == TypeKind::SmallDateTime;
    const int64_t number = conversion::IntegerOfBytes(job.value.text, small ? 4 : 8);
    const int64_t days = small ? (number >> 16) & 0xFFFF : number >> 32;
    const int64_t clock = small ? number & 0xFFFF : number & 0xFFFFFFFF;
    const int64_t perDay = small ? MinutesPerDay : ThirdsPerDay;
    if (clock >= perDay || days < -53690 || days > 2958463) {
        conversion::Overflow(QStringLiteral("expression"), job.to);
    }
    return SqlValue::Integer(days * perDay + clock);
}

}  // namespace

std::string conversion::BytesOfMoment(const SqlValue& value, const SqlType& type) {
    const int64_t stored = value.integer;
    switch (type.kind) {
        case TypeKind::Date:
            return LittleEndian(static_cast<uint64_t>(stored), 3);
        case TypeKind::SmallDateTime:
            return BigEndian(static_cast<uint64_t>(stored / MinutesPerDay), 2) +
                   BigEndian(static_cast<uint64_t>(stored % MinutesPerDay), 2);
        case TypeKind::DateTime: {
            const int64_t clock = (stored % ThirdsPerDay + ThirdsPerDay) % ThirdsPerDay;
            return BigEndian(static_cast<uint64_t>((stored - clock) / ThirdsPerDay), 4) +
                   BigEndian(static_cast<uint64_t>(clock), 4);
        }
        default:
            break;
    }
    const int64_t clock = stored % Moment::TicksPerDay / UnitOf(type.scale);
    std::string bytes(1, static_cast<char>(type.scale));
    bytes += LittleEndian(static_cast<uint64_t>(clock), ClockBytes(type.scale));
    if (type.kind == TypeKind::Time) return bytes;
    bytes += LittleEndian(static_cast<uint64_t>(stored / Moment::TicksPerDay), 3);
    if (type.kind == TypeKind::DateTimeOffset) {
        bytes += LittleEndian(static_cast<uint16_t>(value.offset), 2);
    }
    return bytes;
}

SqlValue conversion::MomentOfBytes(const Job& job) {
    if (IsOldKind(job.to.kind)) return OldMomentOfBytes(job);
    const auto fail = [&job] { throw SqlError(8114, {job.from.Name(), job.to.Name()}); };
    std::string_view bytes = job.value.text;
    int64_t clock = 0;
    if (job.to.kind != TypeKind::Date) {
        const int scale = bytes.empty() ? 8 : static_cast<unsigned char>(bytes[0]);
        if (scale > 7 || bytes.size() < 1 + ClockBytes(scale)) fail();
        clock = static_cast<int64_t>(FromLittleEndian(bytes.substr(1, ClockBytes(scale))));
        clock *= UnitOf(scale);
        if (clock >= Moment::TicksPerDay) fail();
        bytes.remove_prefix(1 + ClockBytes(scale));
    }
    const size_t rest = job.to.kind == TypeKind::Time             ? 0
                        : job.to.kind == TypeKind::DateTimeOffset ? 5
                                                                  : 3;
    if (bytes.size() != rest) fail();
    const auto days = static_cast<int64_t>(FromLittleEndian(bytes.substr(0, rest ? 3 : 0)));
    const auto offset =
        rest == 5 ? static_cast<int16_t>(FromLittleEndian(bytes.substr(3, 2))) : int16_t{0};
    const int64_t ticks = days * Moment::TicksPerDay + clock;
    const bool beyond = ticks > Moment::LastTick || std::abs(offset) > Moment::MaxOffset;
    if (beyond) fail();
    const TypeKind kind = job.to.kind == TypeKind::Date ? TypeKind::DateTime2 : job.to.kind;
    Moment moment = Moment::LoadFully(kind, ticks, offset);
    return StoredAs(moment, job);
}

SqlValue conversion::ToMoment(const Job& job) {
    switch (ClassOf(job.from)) {
        case TypeClass::Moment:
            return StoredAs(FromMoment(job), job);
        case TypeClass::Binary:
            return MomentOfBytes(job);
        case TypeClass::Text: {
            const std::optional<Moment> parsed =
                Moment::Parse(job.value.text, job.to.kind, Moment::OrderOf(job.style));
            if (!parsed) RaiseNoMoment(job);
            Moment moment = *parsed;
            if (job.to.kind != TypeKind::DateTimeOffset) moment.offset = 0;
            if (!moment.Store(job.to) && !IsOldKind(job.to.kind)) throw SqlError(241);
            return StoredAs(moment, job);
        }
        default: {
            const SqlType number = MakeType(TypeKind::Float);
            const Job days{job.value, job.from, number, job.style, job.arena};
            Moment moment;
            if (!TextNumber::MomentFromDays(ToReal(days).real, moment)) {
                Overflow(QStringLiteral("expression"), job.to);
            }
            return StoredAs(moment, job);
        }
    }
}

}  // namespace quarv::localdb::engine
