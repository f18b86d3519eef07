#include "localdb/server/ListenAddress.h"

#include <gtest/gtest.h>

#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

struct AddressCase {
    const char* text;
    const char* back;  // null: refused
};

class AddressCases : public testing::TestWithParam<AddressCase> {};

TEST_P(AddressCases, AreReadOrRefused) {
    const QString text = QString::fromLatin1(GetParam().text);
    if (GetParam().back != nullptr) {
        EXPECT_EQ(ListenAddress::Parse(text).ToText(), QString::fromLatin1(GetParam().back));
    } else {
        EXPECT_THROW(ListenAddress::Parse(text), ServerError);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, AddressCases,
    testing::Values(AddressCase{"127.0.0.1:1433", "127.0.0.1:1433"},
                    AddressCase{"0.0.0.0:0", "0.0.0.0:0"}, AddressCase{"[::1]:99", "[::1]:99"},
                    AddressCase{"127.0.0.1", nullptr}, AddressCase{":1433", nullptr},
                    AddressCase{"::1:99", nullptr}, AddressCase{"[127.0.0.1]:99", nullptr},
                    AddressCase{"localhost:99", nullptr}, AddressCase{"127.0.0.1:65536", nullptr},
                    AddressCase{"127.0.0.1:-1", nullptr}, AddressCase{"127.0.0.1:x", nullptr},
                    AddressCase{"", nullptr}));

TEST(ListenAddressTest, TakenPortIsSaid) {
    ListenAddress first;
    const UniqueFd socket = first.Listen();
    EXPECT_GT(first.port, 0);
    ListenAddress second = first;
    try {
        second.Listen();
        ADD_FAILURE() << "listened twice";
    } catch (const ServerError& error) {
        EXPECT_EQ(error.Description(), QStringLiteral("cannot listen on 127.0.0.1:%1: Address "
                                                      "already in use")
                                           .arg(first.port));
    }
}

}  // namespace quarv::localdb::server
