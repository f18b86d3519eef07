// Several programs at one history, and saving that fails.
#include <sys/resource.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <algorithm>
#include <csignal>

#include "AutoFillFixture.h"
#include "platform/registry/InChild.h"

namespace quarv {
namespace {

using registry::RunInChild;
using registry::StartChild;
using registry::WaitForChild;

class AutoFillSharingTest : public AutoFillFixture {
  protected:
    // A history over the empty section, saved by nobody yet.
    void Begin(AutoFill& fill, const QStringList& newestFirst) {
        fill.Init(box_, Section, Key);
        for (qsizetype i = newestFirst.size(); i-- > 0;) fill.Add(newestFirst[i]);
    }

    // What another program that starts now shows.
    QStringList LoadedList() {
        const OtherProgram other(Paths());
        return ListOf(other.box);
    }

    QString HiveName() const { return QFile::decodeName(Paths().user); }
};

// Each program saves a short and a long list in turn; names tell whose and how many they are.
TEST_F(AutoFillSharingTest, ProgramsSavingAtOnceNeverMixTheirLists) {
    const QStringList lists[] = {{"A1/2", "A2/2"},
                                 {"A1/5", "A2/5", "A3/5", "A4/5", "A5/5"},
                                 {"B1/3", "B2/3", "B3/3"},
                                 {"B1/7", "B2/7", "B3/7", "B4/7", "B5/7", "B6/7", "B7/7"}};
    AutoFill fills[] = {AutoFill(registry_), AutoFill(registry_), AutoFill(registry_),
                        AutoFill(registry_)};
    for (int i = 0; i < 4; ++i) Begin(fills[i], lists[i]);
    fills[0].SaveMRU();
    // A child's copies of the registry and the histories are its own.
    const auto save = [](AutoFill& one, AutoFill& other) {
        for (int i = 0; i < 40; ++i) {
            one.SaveMRU();
            other.SaveMRU();
        }
        return 0;
    };
    const pid_t a = StartChild([&] { return save(fills[0], fills[1]); });
    const pid_t b = StartChild([&] { return save(fills[2], fills[3]); });
    QList<QStringList> mixed;
    const auto look = [&] {
        fill_.Init(box_, Section, Key);
        if (std::ranges::find(lists, List()) == std::end(lists)) mixed.append(List());
    };
    int ended = 0;
    for (int status = 0; ended < 2; look()) {
        for (const pid_t child : {a, b}) {
            if (::waitpid(child, &status, WNOHANG) != child) continue;
            ++ended;
            EXPECT_EQ(status, 0);
        }
    }
    look();
    EXPECT_EQ(mixed, QList<QStringList>());
    EXPECT_EQ(LoadedList(), List());
}

TEST_F(AutoFillSharingTest, AListThatCannotBeSavedLeavesTheOldOneWhole) {
    Begin(fill_, {"C", "B", "A"});
    fill_.SaveMRU();
    QDir().mkpath(HiveName() + ".new/in the way");
    fill_.Add("D", true);
    EXPECT_EQ(List(), (QStringList{"D", "C", "B", "A"}));
    EXPECT_EQ(LoadedList(), (QStringList{"C", "B", "A"}));
    QDir(HiveName() + ".new").removeRecursively();
    fill_.Add("E", true);
    EXPECT_EQ(LoadedList(), (QStringList{"E", "D", "C", "B", "A"}));
}

TEST_F(AutoFillSharingTest, AProgramKilledWhileItSavesLeavesTheOldListWhole) {
    Begin(fill_, {"C", "B", "A"});
    fill_.SaveMRU();
    const pid_t child = StartChild([&] {
        const rlimit limit{.rlim_cur = 200, .rlim_max = 200};
        ::setrlimit(RLIMIT_FSIZE, &limit);  // its signal kills the child within the write
        std::signal(SIGXFSZ, SIG_DFL);
        fill_.Add(QString(300, u'd'));
        fill_.Add("E", true);
        return 0;
    });
    EXPECT_EQ(-1, WaitForChild(child));
    EXPECT_TRUE(QFile::exists(HiveName() + ".new"));
    EXPECT_EQ(LoadedList(), (QStringList{"C", "B", "A"}));
}

TEST_F(AutoFillSharingTest, TheProgramsEndLeavesTheListToTheNext) {
    EXPECT_EQ(0, RunInChild([&] {
                  Begin(fill_, {"B", "A"});
                  fill_.SaveMRU();
                  return 0;
              }));
    EXPECT_EQ(LoadedList(), (QStringList{"B", "A"}));
}

TEST_F(AutoFillSharingTest, SavingTheListThatIsStoredWritesNothing) {
    Begin(fill_, {"B", "A"});
    fill_.SaveMRU();
    struct stat before {
    }, after{};
    ::stat(Paths().user.constData(), &before);
    fill_.SaveMRU();
    ::stat(Paths().user.constData(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
}

}  // namespace
}  // namespace quarv
