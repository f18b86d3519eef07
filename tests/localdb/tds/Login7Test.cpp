#include "TokenChecks.h"
#include "localdb/tds/Login7.h"

namespace quarv::localdb::tds {

namespace {

// User "sa", password "pw", database "db", packet size 4096.
constexpr auto LoginHex =
    "6A 00 00 00  04 00 00 74  00 10 00 00  00 00 00 07  2A 00 00 00  00 00 00 00"
    "E0 03 00 00  00 00 00 00  09 04 00 00"
    "5E 00 00 00  5E 00 02 00  62 00 02 00  66 00 00 00  66 00 00 00"
    "66 00 00 00"
    "66 00 00 00  66 00 00 00  66 00 02 00"
    "00 00 00 00 00 00"
    "6A 00 00 00  6A 00 00 00  6A 00 00 00  00 00 00 00"
    "73 00 61 00  A2 A5 D2 A5  64 00 62 00";

Login7 SampleLogin() {
    Login7 login;
    login.clientVersion = 0x07000000;
    login.clientPid = 42;
    login.flags1 = 0xE0;
    login.flags2 = 0x03;
    login.lcid = 0x0409;
    login.userName = QStringLiteral("sa");
    login.password = QStringLiteral("pw");
    login.database = QStringLiteral("db");
    return login;
}

Fault LoginFault(const std::vector<std::byte>& bytes, size_t* position = nullptr) {
    return FaultOf([&] { Login7::Decode(bytes); }, position);
}

void Poke(std::vector<std::byte>& bytes, size_t at, int value) {
    bytes[at] = static_cast<std::byte>(value);
}

}  // namespace

TEST(Login7Test, HasItsBytes) {
    EXPECT_EQ(Encoded(SampleLogin()), ToHex(Hex(LoginHex)));
}

TEST(Login7Test, ReadsWhoAndWhat) {
    const Login7 login = Login7::Decode(Hex(LoginHex));
    EXPECT_EQ(login.tdsVersion, tds_version::V74);
    EXPECT_EQ(login.packetSize, 4096u);
    EXPECT_EQ(login.clientPid, 42u);
    EXPECT_EQ(login.userName, QStringLiteral("sa"));
    EXPECT_EQ(login.password, QStringLiteral("pw"));
    EXPECT_EQ(login.database, QStringLiteral("db"));
    EXPECT_TRUE(login.hostName.isEmpty());
    EXPECT_FALSE(login.Integrated());
    EXPECT_EQ(Encoded(login), ToHex(Hex(LoginHex)));
}

TEST(Login7Test, EveryFieldComesBack) {
    Login7 login = SampleLogin();
    login.hostName = QStringLiteral("h");
    login.appName = QString::fromUtf8("\xF0\x9F\x98\x80");
    login.serverName = QStringLiteral("server");
    login.libraryName = QStringLiteral("library");
    login.language = QStringLiteral("us_english");
    login.attachFile = QStringLiteral("file");
    login.newPassword = QStringLiteral("new");
    login.sspi = QByteArray("\1\2\3");
    login.timeZone = -60;
    login.flags3 = Login7::HasExtension;
    login.features = QByteArray::fromHex("0A0100000001FF");
    BufferWriter writer;
    login.Encode(writer);
    const Login7 read = Login7::Decode(writer.Written());
    EXPECT_EQ(read.hostName, login.hostName);
    EXPECT_EQ(read.appName, login.appName);
    EXPECT_EQ(read.serverName, login.serverName);
    EXPECT_EQ(read.libraryName, login.libraryName);
    EXPECT_EQ(read.language, login.language);
    EXPECT_EQ(read.attachFile, login.attachFile);
    EXPECT_EQ(read.newPassword, login.newPassword);
    EXPECT_EQ(read.sspi, login.sspi);
    EXPECT_EQ(read.timeZone, -60);
    EXPECT_EQ(read.features, login.features);
}

TEST(Login7Test, EveryTruncationIsRefused) {
    const auto bytes = Hex(LoginHex);
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        const Fault fault = FaultOf([&] { Login7::Decode(std::span(bytes).first(cut)); });
        EXPECT_EQ(fault, cut < 4 ? Fault::Truncated : Fault::LoginLength);
    }
}

TEST(Login7Test, EveryTruncationWithAFittingLengthIsRefused) {
    // The length is made to fit, so that the fields themselves must be found wrong.
    for (size_t cut = 4; cut < Hex(LoginHex).size(); ++cut) {
        SCOPED_TRACE(cut);
        auto bytes = Hex(LoginHex);
        bytes.resize(cut);
        Poke(bytes, 0, static_cast<int>(cut));
        EXPECT_THROW(Login7::Decode(bytes), ProtocolError);
    }
}

TEST(Login7Test, FieldOutsideTheRecordIsRefusedAtItsEntry) {
    auto offset = Hex(LoginHex);
    Poke(offset, 41, 0xFF);  // the user name's offset
    size_t position = 0;
    EXPECT_EQ(LoginFault(offset, &position), Fault::LoginField);
    EXPECT_EQ(position, 40u);
    auto length = Hex(LoginHex);
    Poke(length, 71, 0xFF);  // the database's length
    EXPECT_EQ(LoginFault(length, &position), Fault::LoginField);
    EXPECT_EQ(position, 68u);
    auto sspi = Hex(LoginHex);
    Poke(sspi, 80, 0x01);
    EXPECT_EQ(LoginFault(sspi, &position), Fault::LoginField);
    EXPECT_EQ(position, 78u);
}

TEST(Login7Test, OverflowingLongSspiLengthIsRefused) {
    auto bytes = Hex(LoginHex);
    Poke(bytes, 80, 0xFF);
    Poke(bytes, 81, 0xFF);
    for (size_t at = 90; at < 94; ++at) Poke(bytes, at, 0xFF);
    EXPECT_EQ(LoginFault(bytes), Fault::LoginField);
}

TEST(Login7Test, FeatureListOutsideTheRecordIsRefused) {
    auto noPointer = Hex(LoginHex);
    Poke(noPointer, 27, Login7::HasExtension);
    EXPECT_EQ(LoginFault(noPointer), Fault::LoginExtension);
    auto farPointer = noPointer;
    Poke(farPointer, 58, 4);     // the extension's length
    Poke(farPointer, 56, 0x66);  // its offset: at the database's name, which reads as 0x00620064
    EXPECT_EQ(LoginFault(farPointer), Fault::LoginExtension);
}

TEST(Login7Test, FeatureListWithoutEndIsRefused) {
    Login7 login = SampleLogin();
    login.flags3 = Login7::HasExtension;
    login.features = QByteArray::fromHex("0AFFFFFFFF01");
    BufferWriter writer;
    login.Encode(writer);
    EXPECT_EQ(FaultOf([&] { Login7::Decode(writer.Written()); }), Fault::Truncated);
}

TEST(Login7Test, EveryDamagedByteReadsOrRaises) {
    const auto whole = Hex(LoginHex);
    for (size_t at = 0; at < whole.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            auto bytes = whole;
            Poke(bytes, at, value);
            try {
                Login7::Decode(bytes);
            } catch (const ProtocolError& error) {
                EXPECT_LE(error.Position(), bytes.size());
            }
        }
    }
}

}  // namespace quarv::localdb::tds
