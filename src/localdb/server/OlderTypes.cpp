#include "localdb/server/OlderTypes.h"

#include "localdb/server/MomentText.h"
#include "localdb/tds/StringValues.h"

namespace quarv::localdb::server {

namespace {

using engine::Datum;
using engine::SqlType;
using engine::TypeKind;
using tds::ByteWriter;
using tds::TypeInfo;

// The info's scale is that of the date or time, though text has none.
void DateAsText(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteWide(w, tds::FormOf(t), MomentText().Date(d.integer).View());
}
void TimeAsText(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteWide(w, tds::FormOf(t), MomentText().Time(d.integer, t.scale).View());
}
void DateTime2AsText(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    tds::WriteWide(w, tds::FormOf(t), MomentText().DateTime(d.integer, t.scale).View());
}
void OffsetAsText(ByteWriter& w, const TypeInfo& t, const Datum& d) {
    const int64_t local = d.integer + d.offsetMinutes * MomentText::TicksOfMinute;
    tds::WriteWide(w, tds::FormOf(t),
                   MomentText().DateTime(local, t.scale).Offset(d.offsetMinutes).View());
}

OlderForm Text(const SqlType& type, int32_t length, RowEncoder::ValueWriter write) {
    SqlType text = type;
    text.kind = TypeKind::NVarChar;
    text.length = length;
    return {text, write};
}

// With the fraction's point and digits, where there are any.
int32_t WithFraction(int32_t length, const SqlType& type) {
    return type.scale == 0 ? length : length + 1 + type.scale;
}

OlderForm Long(const SqlType& type, TypeKind kind) {
    SqlType old = type;
    old.kind = kind;
    return {old, nullptr};
}

OlderForm Before72(const SqlType& type) {
    if (type.kind == TypeKind::Xml) return Long(type, TypeKind::NText);
    if (type.length != SqlType::Max) return {type, nullptr};
    switch (type.kind) {
        case TypeKind::VarChar:
            return Long(type, TypeKind::Text);
        case TypeKind::NVarChar:
            return Long(type, TypeKind::NText);
        case TypeKind::VarBinary:
            return Long(type, TypeKind::Image);
        default:
            return {type, nullptr};
    }
}

}  // namespace

OlderForm FormFor(tds::Dialect dialect, const SqlType& type) {
    if (dialect >= tds::Dialect::V73A) return {type, nullptr};
    switch (type.kind) {
        case TypeKind::Date:
            return Text(type, 10, DateAsText);
        case TypeKind::Time:
            return Text(type, WithFraction(8, type), TimeAsText);
        case TypeKind::DateTime2:
            return Text(type, WithFraction(19, type), DateTime2AsText);
        case TypeKind::DateTimeOffset:
            return Text(type, WithFraction(26, type), OffsetAsText);
        default:
            return dialect == tds::Dialect::V71 ? Before72(type) : OlderForm{type, nullptr};
    }
}

}  // namespace quarv::localdb::server
