#include "localdb/engine/ConversionTable.h"

#include <array>
#include <string_view>

namespace quarv::localdb::engine {

namespace {

// Kinds that convert alike.
enum Group : uint8_t {
    Numbers,  // whole numbers, decimals, money
    Floats,
    Narrow,  // char, varchar
    Wide,    // nchar, nvarchar
    OldText,
    OldWide,    // ntext
    Bytes,      // binary, varbinary
    OldBytes,   // image
    Day,        // date
    Clock,      // time
    OldMoment,  // smalldatetime, datetime
    NewMoment,  // datetime2, datetimeoffset
    Id,         // uniqueidentifier
    Version,    // rowversion
    Markup,     // xml
    GroupCount
};

constexpr std::array<Group, 29> Groups = {
    Numbers,   Numbers,   Numbers, Numbers,  Numbers, Floats, Floats,    Numbers,
    Numbers,   Numbers,   Numbers, Narrow,   Narrow,  Wide,   Wide,      OldText,
    OldWide,   Bytes,     Bytes,   OldBytes, Day,     Clock,  OldMoment, OldMoment,
    NewMoment, NewMoment, Id,      Version,  Markup};

// A row a group converted from, a letter a group converted to: implicit, explicit, not at all.
constexpr std::array<std::string_view, GroupCount> Table = {
    // NFCWTXBIDMSOGRL
    "iiii--i---i--i-",  // Numbers
    "iiii--i---i----",  // Floats
    "iiiiiieiiiiiiei",  // Narrow
    "iiiiiie-iiiii-i",  // Wide
    "--ieii--------i",  // OldText
    "--eiii--------i",  // OldWide
    "i-ii--iieeieiii",  // Bytes
    "------ii-----i-",  // OldBytes
    "--ii--e-i-ii---",  // Day
    "--ii--e--iii---",  // Clock
    "eeii--e-iiii-e-",  // OldMoment
    "--ii--e-iiii---",  // NewMoment
    "--ii--i-----i--",  // Id
    "i-i---ii--i--i-",  // Version
    "--ee--e-------i",  // Markup
};

constexpr bool IsWhole() {
    for (const std::string_view row : Table) {
        if (row.size() != GroupCount) return false;
    }
    return true;
}
static_assert(IsWhole());

}  // namespace

ConversionKind ConversionOf(TypeKind from, TypeKind to) {
    const Group row = Groups[static_cast<size_t>(from)], column = Groups[static_cast<size_t>(to)];
    switch (Table[row][column]) {
        case 'i':
            return ConversionKind::Implicit;
        case 'e':
            return ConversionKind::Explicit;
        default:
            return ConversionKind::None;
    }
}

}  // namespace quarv::localdb::engine
