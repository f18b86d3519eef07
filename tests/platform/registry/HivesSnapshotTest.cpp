// Reads that go together, while other programs write.
#include <optional>

#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

class HivesSnapshotTest : public RegistryHome {
  protected:
    HivesSnapshotTest() { Write("v", "before"); }

    // As another program.
    void Write(const char* name, const QByteArray& text, HKey root = HKEY_CURRENT_USER) {
        Hives other = NewHives();
        Set(other, root, "K", name, text);
    }
    QByteArray Read(const char* name) { return Get(hives_, HKEY_CURRENT_USER, "K", name); }

    Hives hives_ = NewHives();
};

TEST_F(HivesSnapshotTest, ShowsOneStateUntilItEnds) {
    {
        const Hives::Snapshot snapshot(hives_);
        EXPECT_EQ("before", Read("v"));
        Write("v", "after");
        Write("w", "new");
        EXPECT_EQ("before", Read("v"));
        EXPECT_EQ("(code 2)", Read("w"));
    }
    EXPECT_EQ("after", Read("v"));
    EXPECT_EQ("new", Read("w"));
}

TEST_F(HivesSnapshotTest, IsTakenByItsFirstRead) {
    EXPECT_EQ("before", Read("v"));
    const Hives::Snapshot snapshot(hives_);
    Write("v", "after");
    EXPECT_EQ("after", Read("v"));
}

TEST_F(HivesSnapshotTest, LastsAsLongAsTheOuterOne) {
    const Hives::Snapshot outer(hives_);
    {
        const Hives::Snapshot inner(hives_);
        EXPECT_EQ("before", Read("v"));
    }
    Write("v", "after");
    EXPECT_EQ("before", Read("v"));
}

TEST_F(HivesSnapshotTest, IsTakenAnewBehindAWriteOfItsOwn) {
    const Hives::Snapshot snapshot(hives_);
    EXPECT_EQ("before", Read("v"));
    Write("v", "after");
    Set(hives_, HKEY_CURRENT_USER, "K", "w", "mine");
    EXPECT_EQ("after", Read("v"));
    EXPECT_EQ("mine", Read("w"));
    Write("v", "later");
    EXPECT_EQ("after", Read("v"));
}

TEST_F(HivesSnapshotTest, ShowsAWriteOfItsOwnInTheOverlayToo) {
    BlockMachineHive();
    const Hives::Snapshot snapshot(hives_);
    EXPECT_EQ("(code 2)", Get(hives_, HKEY_LOCAL_MACHINE, "K", "v"));
    Set(hives_, HKEY_LOCAL_MACHINE, "K", "v", "mine");
    EXPECT_EQ("mine", Get(hives_, HKEY_LOCAL_MACHINE, "K", "v"));
}

TEST_F(HivesSnapshotTest, KeepsAFailureToo) {
    const QByteArray hive = FileBytes(paths_.user);
    PutFile(paths_.user, "quarv-hive 2\n");
    std::optional<Hives::Snapshot> snapshot(std::in_place, hives_);
    EXPECT_EQ("(code 50)", Read("v"));
    PutFile(paths_.user, hive);
    EXPECT_EQ("(code 50)", Read("v"));
    snapshot.reset();
    EXPECT_EQ("before", Read("v"));
}

TEST_F(HivesSnapshotTest, HoldsTheMachineHiveAndItsOverlay) {
    Write("v", "for all", HKEY_LOCAL_MACHINE);
    std::optional<Hives::Snapshot> snapshot(std::in_place, hives_);
    EXPECT_EQ("for all", Get(hives_, HKEY_LOCAL_MACHINE, "K", "v"));
    PutFile(paths_.overlay, "quarv-hive 1\nkey \"K\"\nvalue \"v\" text \"mine\"\nend\n");
    EXPECT_EQ("for all", Get(hives_, HKEY_LOCAL_MACHINE, "K", "v"));
    snapshot.reset();
    EXPECT_EQ("mine", Get(hives_, HKEY_LOCAL_MACHINE, "K", "v"));
}

}  // namespace
}  // namespace quarv::registry
