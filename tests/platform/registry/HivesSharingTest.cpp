// Several programs at one hive.
#include <fcntl.h>
#include <sys/file.h>

#include "platform/registry/InChild.h"
#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

class HivesSharingTest : public RegistryHome {
  protected:
    // Holds the lock as another program would, until it is destroyed.
    UniqueFd Lock(const QByteArray& hive) {
        UniqueFd fd(::open((hive + ".lock").constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        EXPECT_EQ(0, ::flock(fd.Get(), LOCK_EX | LOCK_NB));
        return fd;
    }
};

TEST_F(HivesSharingTest, TwoProgramsKeepEachOthersValues) {
    Hives one = NewHives();
    Hives two = NewHives();
    Set(one, HKEY_CURRENT_USER, "K", "a", "1");
    Set(two, HKEY_CURRENT_USER, "K", "b", "2");
    Set(one, HKEY_CURRENT_USER, "K", "c", "3");
    for (Hives* hives : {&one, &two}) {
        EXPECT_EQ("1", Get(*hives, HKEY_CURRENT_USER, "K", "a"));
        EXPECT_EQ("2", Get(*hives, HKEY_CURRENT_USER, "K", "b"));
        EXPECT_EQ("3", Get(*hives, HKEY_CURRENT_USER, "K", "c"));
    }
}

TEST_F(HivesSharingTest, ProgramsWritingAtOnceLoseNothing) {
    constexpr int Writers = 3;
    constexpr int Values = 15;
    pid_t children[Writers];
    for (int writer = 0; writer < Writers; ++writer)
        children[writer] = StartChild([&] {
            Hives hives = NewHives();
            for (int i = 0; i < Values; ++i) {
                const QByteArray name = QByteArray::number(writer) + "-" + QByteArray::number(i);
                if (Set(hives, HKEY_CURRENT_USER, "K", name.constData(), name) != ERROR_SUCCESS)
                    return 1;
            }
            return 0;
        });
    for (const pid_t child : children) EXPECT_EQ(0, WaitForChild(child));
    Hives hives = NewHives();
    for (int writer = 0; writer < Writers; ++writer)
        for (int i = 0; i < Values; ++i) {
            const QByteArray name = QByteArray::number(writer) + "-" + QByteArray::number(i);
            EXPECT_EQ(name, Get(hives, HKEY_CURRENT_USER, "K", name.constData()));
        }
}

TEST_F(HivesSharingTest, AReaderSeesOnlyWholeFiles) {
    Hives hives = NewHives();
    Set(hives, HKEY_CURRENT_USER, "K", "v", QByteArray(3000, 'a'));
    const pid_t writer = StartChild([&] {
        Hives own = NewHives();
        for (int i = 0; i < 30; ++i)
            Set(own, HKEY_CURRENT_USER, "K", "v", QByteArray(3000, i % 2 == 0 ? 'b' : 'a'));
        return 0;
    });
    for (int status = 0; ::waitpid(writer, &status, WNOHANG) == 0;) {
        const QByteArray seen = Get(hives, HKEY_CURRENT_USER, "K", "v");
        ASSERT_TRUE(seen == QByteArray(3000, 'a') || seen == QByteArray(3000, 'b'));
    }
    EXPECT_EQ(QStringList(), reports_);
}

TEST_F(HivesSharingTest, ValuesThatAreSetTogetherAreSeenTogether) {
    // Generation `n` is "n" in all the values; an odd one has three values more.
    const auto write = [](Hives& hives, int n) {
        std::vector<ValueChange> changes;
        for (int i = 0; i < 8; ++i) {
            ValueChange change{.name = QByteArray::number(i), .type = REG_SZ, .data = {}};
            if (i < 5 || n % 2 != 0) change.data = QByteArray::number(n) + '\0';
            changes.push_back(change);
        }
        return hives.RegSetKeyValues(HKEY_CURRENT_USER, "K", changes);
    };
    Hives hives = NewHives();
    ASSERT_EQ(ERROR_SUCCESS, write(hives, 0));
    const pid_t writer = StartChild([&] {
        Hives own = NewHives();
        for (int n = 1; n <= 60; ++n)
            if (write(own, n) != ERROR_SUCCESS) return 1;
        return 0;
    });
    QStringList torn;
    int status = 0;
    while (::waitpid(writer, &status, WNOHANG) == 0) {
        const Hives::Snapshot snapshot(hives);
        QByteArrayList seen;
        for (int i = 0; i < 8; ++i)
            seen.append(Get(hives, HKEY_CURRENT_USER, "K", QByteArray::number(i).constData()));
        const bool isOdd = seen[0].toInt() % 2 != 0;
        if (seen.count(seen[0]) != (isOdd ? 8 : 5) || seen.count("(code 2)") != (isOdd ? 0 : 3))
            torn.append(QString::fromLatin1(seen.join(' ')));
    }
    EXPECT_EQ(0, status);
    EXPECT_EQ(QStringList(), torn);
    EXPECT_EQ("60", Get(hives, HKEY_CURRENT_USER, "K", "4"));
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "5"));
}

TEST_F(HivesSharingTest, ALockThatIsNotGivenBackFailsTheWriteAndNoRead) {
    Hives hives = NewHives();
    Set(hives, HKEY_CURRENT_USER, "K", "v", "before");
    const UniqueFd held = Lock(paths_.user);
    const ValueChange after{.name = "v", .type = REG_SZ, .data = "after"};
    const ValueChange more{.name = "w", .type = REG_SZ, .data = "more"};
    EXPECT_EQ(ERROR_LOCK_VIOLATION, hives.RegSetKeyValues(HKEY_CURRENT_USER, "K", {after, more}));
    EXPECT_EQ("before", Get(hives, HKEY_CURRENT_USER, "K", "v"));
    EXPECT_EQ("(code 2)", Get(hives, HKEY_CURRENT_USER, "K", "w"));
}

TEST_F(HivesSharingTest, ALockedMachineHiveIsNoReasonForTheOverlay) {
    Hives hives = NewHives();
    Set(hives, HKEY_LOCAL_MACHINE, "K", "v", "before");
    const UniqueFd held = Lock(paths_.machine);
    EXPECT_EQ(ERROR_LOCK_VIOLATION, Set(hives, HKEY_LOCAL_MACHINE, "K", "v", "after"));
    EXPECT_FALSE(Exists(paths_.overlay));
}

TEST_F(HivesSharingTest, ALockThatIsGivenBackIsWaitedFor) {
    Hives hives = NewHives();
    Set(hives, HKEY_CURRENT_USER, "K", "v", "before");
    UniqueFd held = Lock(paths_.user);
    const pid_t writer = StartChild([&] {
        held.Reset();  // the parent holds it on
        Hives own = NewHives();
        return static_cast<int>(Set(own, HKEY_CURRENT_USER, "K", "v", "after"));
    });
    held.Reset();
    EXPECT_EQ(0, WaitForChild(writer));
    EXPECT_EQ("after", Get(hives, HKEY_CURRENT_USER, "K", "v"));
}

TEST_F(HivesSharingTest, ALockFileThatWasRemovedLocksNobodyOut) {
    Hives hives = NewHives();
    Set(hives, HKEY_CURRENT_USER, "K", "v", "before");
    const UniqueFd held = Lock(paths_.user);
    QFile::remove(QFile::decodeName(paths_.user) + ".lock");
    EXPECT_EQ(ERROR_SUCCESS, Set(hives, HKEY_CURRENT_USER, "K", "v", "after"));
}

}  // namespace
}  // namespace quarv::registry
