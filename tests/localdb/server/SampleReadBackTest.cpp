// Every type of the sample as other makers' programs read it. What they print is exact as far as
// their own conversions go: tsql gives moments to the minute, bsqldb knows neither uniqueidentifier
// nor the moments of 7.3, which go to it as texts.
#include <gmock/gmock.h>

#include "LocalProgramFixture.h"

namespace quarv::localdb::server {

namespace {

using testing::HasSubstr;

constexpr const char* Employees =
    "select EmployeeID, FullName, BornOn, HiredAt, ShiftBegins, Salary, Desk, IsActive "
    "from Employees where EmployeeID in (1, 5) order by EmployeeID";
constexpr const char* Badges =
    "select BadgeID, Portrait from Employees where EmployeeID in (1, 5) order by EmployeeID";
constexpr const char* Movements =
    "select MovementID, WarehouseCode, MovedAt, Quantity, UnitCost, Reference from StockMovements "
    "where MovementID in (1, 25000) order by MovementID";
constexpr const char* Shipments =
    "select ParcelNumber, LastSeen, WeightKg, Label from Shipments where OrderID = 1003";
constexpr const char* Documents =
    "select Language, Body, Properties, WrittenAt from Documents where Language in ('fr', 'ja') "
    "order by Language";
constexpr const char* Archive =
    "select Year, Caption, PlainText, WideText, Scan from Archive where Year in (1998, 1999) "
    "and Sheet = 1 order by Year";
constexpr const char* Measurements =
    "select Acidity, Caffeine, Grains, Verdict, Fingerprint from Measurements "
    "where SampleNumber in (2, 4) order by SampleNumber";
constexpr const char* Currencies =
    "select CurrencyCode, EuroRate, QuotedOn from Currencies where CurrencyCode = 'JPY'";

// Each statement with what divides it from the next.
QByteArray Script(std::initializer_list<const char*> statements, const char* divider) {
    QByteArray text;
    for (const char* statement : statements) text.append(statement).append(divider);
    return text;
}

class SampleReadBackTest : public LocalProgramFixture {};

}  // namespace

TEST_F(SampleReadBackTest, IsqlReadsEveryTypeExactly) {
    if (!HasProgram("isql")) GTEST_SKIP() << "isql is not installed";
    const Output output = RunIsql(target_, Script({Employees, Badges, Movements, Shipments,
                                                   Documents, Archive, Measurements, Currencies},
                                                  "\n"));
    for (const char* line :
         {"1,Mireille Fontaine,1968-02-29,1998-04-01 09:00:00,09:00:00,6200.0000,1,1\n"
          "5,Ewa \u0141ukasik,2001-09-11,2023-09-01 09:00:00,,2100.0000,12,0\n",
          "6F9619FF-8B86-D011-B42D-00C04FC964FF,89504e470d0a1a0a\n"
          "9E107D9D-372B-4B6D-8E4D-5C1E1C1A7A11,\n",
          "1,PIR,2022-01-03 07:00:00.000,40,2.5000,\n"
          "25000,NCY,2024-12-31 23:57:33.000,-15,2.8700,M-25000\n",
          "1,2024-02-12 09:30:00 +09:00,1.100,0000000000000000\n",
          "du vendeur jusqu'au paiement. \u2615,,2021-07-01 08:00:00.0000000\n",
          "<guide><step n=\"1\">\u6e29\u3081\u308b</step><step "
          "n=\"2\">\u70b9\u3066\u308b</step></guide>,"
          "2023-11-11 11:11:11.1111111\n",
          "1998,Opening day,Sold: 3 tins of Assam, 1 teapot. Rain.,Premi\u00e8re recette : 412 F,"
          "424d3e00000000000000\n"
          "1999,,,Neujahrsgr\u00fc\u00dfe an alle \U0001f386,00ff00ff\n",
          "6.125,0.035000000000000003,,excellent,\n"
          ",9.9999999999999998e-13,9223372036854775807,under the limit,"
          "00112233445566778899aabbccddeeff\n",
          "JPY,0.006418485,2024-01-02\n"}) {
        EXPECT_THAT(output.text, HasSubstr(line));
    }
}

TEST_F(SampleReadBackTest, TsqlReadsEveryType) {
    if (!HasProgram("tsql")) GTEST_SKIP() << "tsql is not installed";
    const Output output = RunTsql(target_, Script({Employees, Badges, Movements, Shipments,
                                                   Documents, Archive, Measurements, Currencies},
                                                  "\ngo\n") +
                                               "exit\n");
    EXPECT_EQ(output.status, 0);
    for (const char* line :
         {"1\tMireille Fontaine\tFeb 29 1968 12:00AM\tApr  1 1998 09:00AM\tJan  1 1900 09:00AM\t"
          "6200.0000\t1\t1\n",
          "6F9619FF-8B86-D011-B42D-00C04FC964FF\t89504e470d0a1a0a\n",
          "25000\tNCY\tDec 31 2024 11:57PM\t-15\t2.8700\tM-25000\n",
          "1\tFeb 12 2024 09:30AM\t1.100\t0000000000000000\n",
          "<step n=\"2\">\u70b9\u3066\u308b</step></guide>\tNov 11 2023 11:11AM\n",
          "1999\tNULL\tNULL\tNeujahrsgr\u00fc\u00dfe an alle \U0001f386\t00ff00ff\n",
          "NULL\t9.9999999999999998e-13\t9223372036854775807\tunder the limit\t"
          "00112233445566778899aabbccddeeff\n",
          "JPY\t0.006418485\tJan  2 2024 12:00AM\n"}) {
        EXPECT_THAT(output.text, HasSubstr(line));
    }
}

TEST_F(SampleReadBackTest, BsqldbReadsTheTypesThatItKnows) {
    if (!HasProgram("bsqldb")) GTEST_SKIP() << "bsqldb is not installed";
    Target target = target_;
    target.version = QStringLiteral("7.1");
    const Output output = RunBsqldb(
        target, Script({"exec sp_server_info 2", "exec sp_tables", Employees, Movements, Shipments,
                        Archive, Measurements,
                        "select Language, Body, WrittenAt from Documents where Language = 'ja'"},
                       "\ngo\n"));
    EXPECT_EQ(output.status, 0) << output.text;
    for (const char* part :
         {"DBMS_VER", "StockMovements", "Ewa \u0141ukasik", "6200.0000", "2024-12-31 23:57:33.000",
          "2024-02-12 09:30:00 +09:00", "Neujahrsgr\u00fc\u00dfe an alle \U0001f386", "0x00ff00ff",
          "9223372036854775807", "0x00112233445566778899aabbccddeeff",
          "2023-11-11 11:11:11.1111111"}) {
        EXPECT_THAT(output.text, HasSubstr(part));
    }
}

TEST_F(SampleReadBackTest, IsqlGivesUpAStatementAndGoesOn) {
    if (!HasProgram("isql")) GTEST_SKIP() << "isql is not installed";
    Target target = target_;
    target.timeout = 1;
    const Output output = RunIsql(target, "waitfor delay '0:0:25'\nselect N'on it goes' w\n");
    EXPECT_THAT(output.text, HasSubstr("Timeout expired"));
    EXPECT_THAT(output.text, HasSubstr("\non it goes\n"));
}

}  // namespace quarv::localdb::server
