#include "localdb/server/RowEncoder.h"

#include <algorithm>
#include <array>

#include "localdb/engine/Guid.h"
#include "localdb/server/OlderTypes.h"
#include "localdb/server/TypeMapping.h"
#include "localdb/tds/NumericValues.h"
#include "localdb/tds/Row.h"
#include "localdb/tds/StringValues.h"
#include "localdb/tds/TemporalValues.h"

namespace quarv::localdb::server {

namespace {

using engine::Datum;
using engine::TypeKind;
using tds::ByteWriter;
using tds::TypeInfo;

void Integer(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteInteger(w, t.size, d.integer);
}
void Float(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteFloat(w, t.size, d.real);
}
void Money(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteMoney(w, t.size, d.integer);
}
void Decimal(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteDecimal(w, t.size, d.magnitude, d.negative);
}
void Wide(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteWide(w, tds::FormOf(t), d.text);
}
void Narrow(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteNarrow(w, tds::FormOf(t), d.text);
}
void Binary(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteBinary(w, tds::FormOf(t), d.bytes);
}
void Date(ByteWriter& w, const TypeInfo&, const Datum& d) {
    tds::WriteDate(w, d.integer);
}
void Time(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteTime(w, t.scale, d.integer);
}
void SmallDateTime(ByteWriter& w, const TypeInfo&, const Datum& d) {
    tds::WriteSmallDateTime(w, d.integer);
}
void DateTime(ByteWriter& w, const TypeInfo&, const Datum& d) {
    tds::WriteDateTime(w, d.integer);
}
void DateTime2(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteDateTime2(w, t.scale, d.integer);
}
void DateTimeOffset(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteDateTimeOffset(w, t.scale, {d.integer, d.offsetMinutes});
}
void Guid(ByteWriter& w, const TypeInfo&, const Datum& d) {
    const engine::Guid::Bytes wire =
        engine::Guid::ToWire({reinterpret_cast<const char*>(d.bytes.data()), engine::Guid::Size});
    w.U8(engine::Guid::Size);
    w.Bytes(std::as_bytes(std::span(wire)));
}

struct Entry {
    TypeKind kind;
    RowEncoder::ValueWriter write;
};

constexpr std::array<Entry, 29> Entries{{
    {TypeKind::Bit, Integer},
    {TypeKind::TinyInt, Integer},
    {TypeKind::SmallInt, Integer},
    {TypeKind::Int, Integer},
    {TypeKind::BigInt, Integer},
    {TypeKind::Real, Float},
    {TypeKind::Float, Float},
    {TypeKind::SmallMoney, Money},
    {TypeKind::Money, Money},
    {TypeKind::Decimal, Decimal},
    {TypeKind::Numeric, Decimal},
    {TypeKind::Char, Narrow},
    {TypeKind::VarChar, Narrow},
    {TypeKind::NChar, Wide},
    {TypeKind::NVarChar, Wide},
    {TypeKind::Text, Narrow},
    {TypeKind::NText, Wide},
    {TypeKind::Binary, Binary},
    {TypeKind::VarBinary, Binary},
    {TypeKind::Image, Binary},
    {TypeKind::Date, Date},
    {TypeKind::Time, Time},
    {TypeKind::SmallDateTime, SmallDateTime},
    {TypeKind::DateTime, DateTime},
    {TypeKind::DateTime2, DateTime2},
    {TypeKind::DateTimeOffset, DateTimeOffset},
    {TypeKind::UniqueIdentifier, Guid},
    {TypeKind::RowVersion, Binary},
    {TypeKind::Xml, Wide},
}};

// The position in Entries of each kind; the first one for a kind that is not there.
constexpr std::array<uint8_t, 256> Index = [] {
    std::array<uint8_t, 256> index{};
    for (size_t i = 0; i < Entries.size(); ++i) {
        index[static_cast<uint8_t>(Entries[i].kind)] = static_cast<uint8_t>(i);
    }
    return index;
}();

}  // namespace

RowEncoder::ValueWriter RowEncoder::WriterOf(TypeKind kind) {
    return Entries[Index[static_cast<uint8_t>(kind)]].write;
}

RowEncoder::Plan RowEncoder::PlanOf(const engine::SqlType& type, tds::Dialect dialect) {
    const OlderForm form = FormFor(dialect, type);
    return {form.write != nullptr ? form.write : WriterOf(form.type.kind), WireTypeOf(form.type)};
}

void RowEncoder::Begin(ByteWriter& writer, std::span<const engine::Column> columns,
                       tds::Dialect dialect) {
    plans_.clear();
    plans_.reserve(columns.size());
    tds::ColMetadata metadata;
    metadata.columns.reserve(columns.size());
    for (const engine::Column& column : columns) {
        metadata.columns.push_back(WireColumnOf(column));
        plans_.push_back(PlanOf(column.type, dialect));
        metadata.columns.back().type = plans_.back().type;
    }
    nulls_.assign(tds::NullBitmapSize(plans_.size()), std::byte{0});
    bitmaps_ = dialect >= tds::Dialect::V73B;
    metadata.Encode(writer, dialect);
}

void RowEncoder::Write(ByteWriter& writer, std::span<const Datum> row) {
    const size_t count = std::min(row.size(), plans_.size());
    bool anyNull = false;
    std::fill(nulls_.begin(), nulls_.end(), std::byte{0});
    for (size_t i = 0; i < count; ++i) {
        if (!row[i].null) continue;
        nulls_[i / 8] |= static_cast<std::byte>(1u << (i % 8));
        anyNull = true;
    }
    if (anyNull && bitmaps_) {
        tds::BeginNbcRow(writer, nulls_);
    } else {
        tds::BeginRow(writer);
    }
    for (size_t i = 0; i < count; ++i) {
        if (!row[i].null) {
            plans_[i].write(writer, plans_[i].type, row[i]);
        } else if (!bitmaps_) {
            tds::WriteNull(writer, plans_[i].type);
        }
    }
}

}  // namespace quarv::localdb::server
