#include "platform/registry/HivePaths.h"

#include <gtest/gtest.h>

namespace quarv::registry {
namespace {

class HivePathsTest : public testing::Test {
  protected:
    HivePathsTest() {
        qunsetenv("XDG_CONFIG_HOME");
        qunsetenv("XDG_CONFIG_DIRS");
        qputenv("HOME", "/home/ann");
    }
    ~HivePathsTest() override {
        for (const auto& [name, value] : before_) qputenv(name, value);
    }

  private:
    const std::pair<const char*, QByteArray> before_[3] = {
        {"XDG_CONFIG_HOME", qgetenv("XDG_CONFIG_HOME")},
        {"XDG_CONFIG_DIRS", qgetenv("XDG_CONFIG_DIRS")},
        {"HOME", qgetenv("HOME")}};
};

TEST_F(HivePathsTest, DefaultsLieInTheHomeAndInEtc) {
    const HivePaths paths = HivePaths::FromEnvironment();
    EXPECT_EQ("/home/ann/.config/quarv/user.hive", paths.user);
    EXPECT_EQ("/home/ann/.config/quarv/machine-overlay.hive", paths.overlay);
    EXPECT_EQ("/etc/xdg/quarv/machine.hive", paths.machine);
}

struct PathsRow {
    const char* title;
    const char* configHome;
    const char* configDirs;
    QByteArray user;
    QByteArray machine;

    friend void PrintTo(const PathsRow& row, std::ostream* out) { *out << row.title; }
};

class HivePathsRowTest : public HivePathsTest, public testing::WithParamInterface<PathsRow> {};

TEST_P(HivePathsRowTest, FollowTheEnvironment) {
    qputenv("XDG_CONFIG_HOME", GetParam().configHome);
    qputenv("XDG_CONFIG_DIRS", GetParam().configDirs);
    const HivePaths paths = HivePaths::FromEnvironment();
    EXPECT_EQ(GetParam().user, paths.user);
    EXPECT_EQ(GetParam().machine, paths.machine);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HivePathsRowTest,
    testing::Values(PathsRow{"TheFirstOfTheListCounts", "/data/c", "/one:/two",
                             "/data/c/quarv/user.hive", "/one/quarv/machine.hive"},
                    PathsRow{"RelativeCountsAsUnset", "c", "d:/two",
                             "/home/ann/.config/quarv/user.hive", "/etc/xdg/quarv/machine.hive"},
                    PathsRow{"EmptyCountsAsUnset", "", "", "/home/ann/.config/quarv/user.hive",
                             "/etc/xdg/quarv/machine.hive"}),
    [](const auto& row) { return row.param.title; });

}  // namespace
}  // namespace quarv::registry
