#include <gtest/gtest.h>

#include <QFile>

#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace quarv::ado::odbc {
namespace {

bool IsLoaded() {
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QFile::ReadOnly) && maps.readAll().contains("/libtdsodbc.so");
}

TEST(LoadDriver, TheDriverStaysLoaded) {
    LoadDriver();
    EXPECT_TRUE(IsLoaded());
    LoadDriver();
    EXPECT_TRUE(IsLoaded());
}

// In a process of its own, which has not loaded the driver yet and finds no list of drivers.
TEST(LoadDriverDeathTest, WithoutAListOfDriversNothingHappens) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            qputenv("ODBCSYSINI", "/nonexistent");
            qputenv("ODBCINSTINI", "nothing.ini");
            LoadDriver();
            std::exit(IsLoaded() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace quarv::ado::odbc
