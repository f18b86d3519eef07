#include "TokenChecks.h"
#include "localdb/tds/ColMetadata.h"

namespace quarv::localdb::tds {

namespace {

ColumnInfo Column(const char* name, TypeCode code, uint32_t size, uint16_t flags) {
    ColumnInfo column;
    column.name = QString::fromLatin1(name);
    column.type.code = code;
    column.type.size = size;
    column.flags = flags;
    return column;
}

}  // namespace

TEST(ColMetadataTest, DescribesEachColumn) {
    ColMetadata metadata;
    metadata.columns.push_back(Column("id", TypeCode::IntN, 4, ColumnInfo::Identity));
    metadata.columns.push_back(
        Column("n", TypeCode::NVarChar, 100, ColumnInfo::Nullable | ColumnInfo::Updatable));
    const ColMetadata read =
        ExpectTokenBytes<ColMetadata>(metadata,
                                      "81 02 00"
                                      "00 00 00 00 10 00 26 04 02 69 00 64 00"
                                      "00 00 00 00 09 00 E7 64 00 09 04 D0 00 34 01 6E 00");
    EXPECT_EQ(read.columns, metadata.columns);
}

TEST(ColMetadataTest, LongTypesNameTheirTable) {
    ColMetadata metadata;
    metadata.columns.push_back(Column("t", TypeCode::Text, 0x7FFFFFFF, ColumnInfo::Nullable));
    metadata.columns[0].table = {QStringLiteral("a"), QStringLiteral("b")};
    const ColMetadata read = ExpectTokenBytes<ColMetadata>(
        metadata,
        "81 01 00 00 00 00 00 01 00 23 FF FF FF 7F 09 04 D0 00 34 02 01 00 61 00 01 00 62 00"
        "01 74 00");
    EXPECT_EQ(read.columns, metadata.columns);
}

TEST(ColMetadataTest, NoColumnsMeansNoMetadata) {
    EXPECT_TRUE(ExpectTokenBytes<ColMetadata>({}, "81 FF FF").columns.empty());
}

TEST(ColMetadataTest, UnknownTypeIsRefusedAtItsCode) {
    const auto bytes = Hex("81 01 00 00 00 00 00 01 00 77");
    size_t position = 0;
    EXPECT_EQ(FaultOf(
                  [&] {
                      ByteReader reader(bytes);
                      ColMetadata::Decode(reader);
                  },
                  &position),
              Fault::TypeCode);
    EXPECT_EQ(position, 9u);
}

}  // namespace quarv::localdb::tds
