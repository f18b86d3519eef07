#include "TokenChecks.h"
#include "localdb/tds/EnvChange.h"

namespace quarv::localdb::tds {

TEST(EnvChangeTest, DatabaseCarriesNewAndOldName) {
    const EnvChange change =
        EnvChange::OfText(EnvChange::Kind::Database, QStringLiteral("ab"), QStringLiteral("c"));
    EXPECT_EQ(ExpectTokenBytes<EnvChange>(change, "E3 09 00 01 02 61 00 62 00 01 63 00"), change);
}

TEST(EnvChangeTest, CollationCarriesFiveBytesAndNone) {
    const EnvChange change = EnvChange::OfBytes(EnvChange::Kind::SqlCollation,
                                                QByteArray::fromHex("0904D00034"), QByteArray());
    EXPECT_EQ(ExpectTokenBytes<EnvChange>(change, "E3 08 00 07 05 09 04 D0 00 34 00"), change);
}

TEST(EnvChangeTest, CommitCarriesItsDescriptorAsTheOldValue) {
    const EnvChange change = EnvChange::OfBytes(EnvChange::Kind::CommitTransaction, QByteArray(),
                                                QByteArray::fromHex("0102030405060708"));
    EXPECT_EQ(ExpectTokenBytes<EnvChange>(change, "E3 0B 00 09 00 08 01 02 03 04 05 06 07 08"),
              change);
}

TEST(EnvChangeTest, UnknownKindIsRefused) {
    const auto bytes = Hex("E3 03 00 63 00 00");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  EnvChange::Decode(reader);
              }),
              Fault::TokenLength);
}

}  // namespace quarv::localdb::tds
