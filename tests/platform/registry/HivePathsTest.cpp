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

TEST_F(HivePathsTest, TheFirstFolderOfTheListCounts) {
    qputenv("XDG_CONFIG_HOME", "/data/c");
    qputenv("XDG_CONFIG_DIRS", "/one:/two");
    const HivePaths paths = HivePaths::FromEnvironment();
    EXPECT_EQ("/data/c/quarv/user.hive", paths.user);
    EXPECT_EQ("/one/quarv/machine.hive", paths.machine);
}

TEST_F(HivePathsTest, RelativeFoldersCountAsUnset) {
    qputenv("XDG_CONFIG_HOME", "c");
    qputenv("XDG_CONFIG_DIRS", "d:/two");
    const HivePaths paths = HivePaths::FromEnvironment();
    EXPECT_EQ("/home/ann/.config/quarv/user.hive", paths.user);
    EXPECT_EQ("/etc/xdg/quarv/machine.hive", paths.machine);
}

}  // namespace
}  // namespace quarv::registry
