// ColMetadata: the columns of the rows that follow ([MS-TDS], "COLMETADATA").
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "localdb/tds/Dialect.h"
#include "localdb/tds/Token.h"
#include "localdb/tds/TypeInfo.h"

namespace quarv::localdb::tds {

struct ColumnInfo {
    // Bits of the flags.
    static constexpr uint16_t Nullable = 0x0001;
    static constexpr uint16_t Updatable = 0x0008;
    static constexpr uint16_t Identity = 0x0010;
    static constexpr uint16_t Computed = 0x0020;

    uint32_t userType = 0;
    uint16_t flags = 0;
    TypeInfo type;
    QStringList table;  // parts of the table's name; only for text, ntext and image
    QString name;       // at most 255 UTF-16 units; the rest is cut

    friend bool operator==(const ColumnInfo&, const ColumnInfo&) = default;
};

struct ColMetadata {
    std::vector<ColumnInfo> columns;  // none: "no metadata" (FFFF)

    void Encode(ByteWriter& writer, Dialect dialect = Dialect::V74) const;
    // Raises UnexpectedToken and what reading a type raises.
    static ColMetadata Decode(ByteReader& reader, Dialect dialect = Dialect::V74);
};

}  // namespace quarv::localdb::tds
