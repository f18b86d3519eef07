// The dialog over settings files that are damaged, closed, locked or out of room: it opens, says
// nothing of it, opens the main window, and loses nothing that stood in the file.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QScopeGuard>
#include <csignal>

#include "db/ConnectionDialogFixture.h"
#include "platform/registry/RegistryHome.h"

namespace quarv {
namespace {

using registry::FileBytes;
using registry::PutFile;

constexpr const char* Default =
    "Provider=sqloledb;Data Source=localhost;Initial Catalog=mirel;Integrated Security=SSPI;";
constexpr const char* Shipped =
    "Provider=sqloledb;Data Source=shipped;Initial Catalog=stock;Integrated Security=SSPI;";
constexpr const char* Chosen =
    "Provider=sqloledb;Data Source=chosen;Initial Catalog=stock;Integrated Security=SSPI;";

// A hive with the shipped string, and a value of somebody else's.
QByteArray Hive() {
    return QByteArray(
               "quarv-hive 1\nkey \"Software\\\\Kel\\\\Quarv\\\\General\"\n"
               "value \"ConnStr\" text \"") +
           Shipped + "\"\nvalue \"Other\" text \"kept\"\nend\n";
}

// Root becomes a user whom permissions hold back, while this lives; any other user is one already.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        if (isRoot_ && (::setegid(Nobody) != 0 || ::seteuid(Nobody) != 0))
            throw std::runtime_error("seteuid");
    }
    ~OrdinaryUser() {
        if (isRoot_ && (::seteuid(0) != 0 || ::setegid(0) != 0)) std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    static constexpr uid_t Nobody = 65534;

  private:
    const bool isRoot_ = ::geteuid() == 0;
};

// No file may grow beyond so many bytes while this lives.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit before_{};
    void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

class DialogSettingsFixture : public ConnectionDialogFixture {
  protected:
    // The log gets a line about a damaged file; the user gets no box.
    void ShowQuietly() {
        testing::internal::CaptureStderr();
        Show();
        log_ = testing::internal::GetCapturedStderr();
        EXPECT_TRUE(dialog_->isVisible());
    }
    void ExpectOffer(const char* server, const char* database) {
        EXPECT_EQ(TextOf("Servername"), server);
        EXPECT_EQ(TextOf("DatabaseList"), database);
        EXPECT_TRUE(Get<forms::OptionButton>("UseWinAccount").Value());
        EXPECT_TRUE(watch_->Seen().empty());
    }
    // Whatever becomes of the file, the main window opens.
    void Confirm(const char* server) {
        SetText("Servername", server);
        SetText("DatabaseList", "stock");
        Press("Okay");
        EXPECT_EQ(mainWindow_.opened, QStringList{Chosen});
        EXPECT_FALSE(dialog_->isVisible());
        EXPECT_TRUE(watch_->Seen().empty());
    }
    // As a program that starts later finds it.
    QString StoredAnew(const char* value = "ConnStr") {
        registry::Hives hives(paths_);
        return Registry(hives).GetMachineString(SettingsKey, value, "nothing");
    }

    const registry::HivePaths paths_ = PathsIn(folder_);
    std::string log_;
};

struct Damage {
    const char* name;
    QByteArray bytes;
};

void PrintTo(const Damage& damage, std::ostream* out) {
    *out << damage.name;
}

class DamagedSettingsTest : public DialogSettingsFixture,
                            public testing::WithParamInterface<Damage> {};

TEST_P(DamagedSettingsTest, TheDefaultIsOfferedAndTheFileSetAside) {
    PutFile(paths_.machine, GetParam().bytes);
    ShowQuietly();
    ExpectOffer("localhost", "mirel");
    EXPECT_NE(log_.find("machine.hive is damaged"), std::string::npos);
    Confirm("chosen");
    EXPECT_EQ(StoredAnew(), Chosen);
    EXPECT_EQ(FileBytes(paths_.machine + ".damaged-1"), GetParam().bytes);
}

TEST_P(DamagedSettingsTest, ADamagedOverlayLeavesWhatIsThereForAll) {
    PutFile(paths_.machine, Hive());
    PutFile(paths_.overlay, GetParam().bytes);
    ShowQuietly();
    ExpectOffer("shipped", "stock");
    Confirm("chosen");
    EXPECT_EQ(StoredAnew(), Chosen);
    EXPECT_EQ(StoredAnew("Other"), "kept");
    EXPECT_EQ(FileBytes(paths_.overlay + ".damaged-1"), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(, DamagedSettingsTest,
                         testing::Values(Damage{"empty", ""},
                                         Damage{"halfWritten", Hive().chopped(20)},
                                         Damage{"withoutItsEnd", Hive().chopped(4)},
                                         Damage{"zeros", QByteArray(4096, '\0')},
                                         Damage{"anothersText", "[General]\nConnStr=x\n"}),
                         [](const auto& test) { return test.param.name; });

class SQLServerConnectionDetailsSettingsTest : public DialogSettingsFixture {};

TEST_F(SQLServerConnectionDetailsSettingsTest, OkayKeepsWhatElseIsInTheFile) {
    PutFile(paths_.machine, Hive());
    ShowQuietly();
    ExpectOffer("shipped", "stock");
    Confirm("chosen");
    EXPECT_EQ(StoredAnew(), Chosen);
    EXPECT_EQ(StoredAnew("Other"), "kept");
    EXPECT_EQ(log_, "");
}

TEST_F(SQLServerConnectionDetailsSettingsTest, AFolderInItsPlaceIsSetAsideWithWhatIsInIt) {
    PutFile(paths_.machine + "/letter", "dear");
    ShowQuietly();
    ExpectOffer("localhost", "mirel");
    Confirm("chosen");
    EXPECT_EQ(StoredAnew(), Chosen);
    EXPECT_EQ(FileBytes(paths_.machine + ".damaged-1/letter"), "dear");
}

TEST_F(SQLServerConnectionDetailsSettingsTest, AFileOfALaterProgramIsLeftAlone) {
    const QByteArray later = Hive().replace("quarv-hive 1", "quarv-hive 2");
    PutFile(paths_.machine, later);
    ShowQuietly();
    ExpectOffer("localhost", "mirel");
    Confirm("chosen");
    EXPECT_EQ(FileBytes(paths_.machine), later);
}

TEST_F(SQLServerConnectionDetailsSettingsTest, OneWhoMayOnlyReadItKeepsHisOwnOverIt) {
    PutFile(paths_.machine, Hive());
    const QByteArray root = folder_.path().toUtf8();
    ::chmod(root.constData(), 0777);
    ::chmod(paths_.machine.constData(), 0444);
    ::chmod((root + "/machine").constData(), 0555);
    const auto give = qScopeGuard([&] { ::chmod((root + "/machine").constData(), 0755); });
    {
        const OrdinaryUser user;
        ShowQuietly();
        ExpectOffer("shipped", "stock");
        Confirm("chosen");
        EXPECT_EQ(StoredAnew(), Chosen);
        EXPECT_EQ(StoredAnew("Other"), "kept");
    }
    EXPECT_EQ(FileBytes(paths_.machine), Hive());
    struct stat overlay {};
    ASSERT_EQ(::stat(paths_.overlay.constData(), &overlay), 0);
    EXPECT_EQ(overlay.st_mode & 07777u, 0600u);
}

TEST_F(SQLServerConnectionDetailsSettingsTest, OneWhoMayNotReadItIsOfferedTheDefault) {
    PutFile(paths_.machine, Hive());
    ::chmod(folder_.path().toUtf8().constData(), 0777);
    ::chmod(paths_.machine.constData(), 0);
    {
        const OrdinaryUser user;
        ShowQuietly();
        ExpectOffer("localhost", "mirel");
        Confirm("chosen");
        EXPECT_EQ(StoredAnew(), Chosen);
    }
    ::chmod(paths_.machine.constData(), 0600);
    EXPECT_EQ(FileBytes(paths_.machine), Hive());
}

TEST_F(SQLServerConnectionDetailsSettingsTest, OneWhoMayWriteNowhereOpensTheMainWindowAllTheSame) {
    PutFile(paths_.machine, Hive());
    const QByteArray root = folder_.path().toUtf8();
    ::chmod(root.constData(), 0555);
    ::chmod((root + "/machine").constData(), 0555);
    ::chmod(paths_.machine.constData(), 0444);
    const auto give = qScopeGuard([&] {
        ::chmod(root.constData(), 0755);
        ::chmod((root + "/machine").constData(), 0755);
    });
    {
        const OrdinaryUser user;
        ShowQuietly();
        ExpectOffer("shipped", "stock");
        Confirm("chosen");
        EXPECT_EQ(StoredAnew(), Shipped);
    }
    EXPECT_EQ(FileBytes(paths_.machine), Hive());
}

TEST_F(SQLServerConnectionDetailsSettingsTest, AFullDiskKeepsTheOldFile) {
    PutFile(paths_.machine, Hive());
    ShowQuietly();
    {
        const FileSizeLimit limit(64);
        Confirm("chosen");
    }
    EXPECT_EQ(FileBytes(paths_.machine), Hive());
    EXPECT_EQ(StoredAnew(), Shipped);
    // Once there is room again the next confirmation is kept.
    mainWindow_.opened.clear();
    ShowQuietly();
    ExpectOffer("shipped", "stock");
    Confirm("chosen");
    EXPECT_EQ(StoredAnew(), Chosen);
    EXPECT_EQ(StoredAnew("Other"), "kept");
}

TEST_F(SQLServerConnectionDetailsSettingsTest, AnotherProgramsLockIsNoHindrance) {
    PutFile(paths_.machine, Hive());
    const UniqueFd lock(
        ::open((paths_.machine + ".lock").constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    ASSERT_EQ(::flock(lock.Get(), LOCK_EX), 0);
    ShowQuietly();
    ExpectOffer("shipped", "stock");
    Confirm("chosen");
    EXPECT_EQ(FileBytes(paths_.machine), Hive());
}

TEST_F(SQLServerConnectionDetailsSettingsTest, TheDefaultItselfIsStoredWhereNothingWas) {
    ShowQuietly();
    ExpectOffer("localhost", "mirel");
    Press("Okay");
    EXPECT_EQ(StoredAnew(), Default);
}

}  // namespace
}  // namespace quarv
