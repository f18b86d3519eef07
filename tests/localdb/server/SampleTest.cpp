#include "localdb/server/Sample.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "Files.h"
#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

// A fake engine whose databases are files in its directory.
class FileEngine final : public engine::Server {
  public:
    explicit FileEngine(QString directory) : directory_(std::move(directory)) {
        WriteFile(directory_ + QStringLiteral("/master.db"), "m");
    }
    std::unique_ptr<engine::Session> NewSession(const QString&) override;
    bool HasDatabase(const QString& name) const override {
        return QFile::exists(directory_ + u'/' + name + QStringLiteral(".db"));
    }

  private:
    QString directory_;
};

class FileSession final : public engine::Session {
  public:
    explicit FileSession(QString directory) : directory_(std::move(directory)) {}
    QString Database() const override { return {}; }
    void UseDatabase(const QString&) override {}
    void RunBatch(const QString& sql, engine::ResultSink& sink) override {
        if (sql == u"CREATE DATABASE [mirel]") WriteFile(File(), "");
        if (sql == u"DROP DATABASE [mirel]") QFile::remove(File());
        if (sql.startsWith(u"append ")) {
            WriteFile(File(), Contents(File()) + sql.mid(7).toUtf8());
        }
        if (sql == u"fail") {
            engine::Message message;
            message.severity = 16;
            message.line = 3;
            message.text = QStringLiteral("no");
            sink.Say(message);
        }
    }
    void RunProcedure(const QString&, const std::vector<engine::Argument>&,
                      engine::ResultSink&) override {}
    void SetClient(const QString&, const QString&) override {}
    void BeginTransaction(engine::ResultSink&, const QString&, int) override {}
    void SaveTransaction(engine::ResultSink&, const QString&) override {}
    void CommitTransaction(engine::ResultSink&) override {}
    void RollbackTransaction(engine::ResultSink&, const QString&) override {}
    void Reset(const QString&) override {}
    int Id() const override { return 51; }

  private:
    QString File() const { return directory_ + QStringLiteral("/mirel.db"); }
    QString directory_;
};

std::unique_ptr<engine::Session> FileEngine::NewSession(const QString&) {
    return std::make_unique<FileSession>(directory_);
}

EngineAccess FileEngineAccess(const QStringList& batches) {
    EngineAccess access;
    access.open = [](const QString& directory) { return std::make_unique<FileEngine>(directory); };
    access.productVersion = QStringLiteral("16.00.1000");
    access.sampleName = QStringLiteral("mirel");
    access.sampleBatches = batches;
    return access;
}

QStringList FilesIn(const QString& directory) {
    return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                     QDir::Name);
}

}  // namespace

TEST(SampleTest, IsMadeWhole) {
    QTemporaryDir directory;
    const auto access = FileEngineAccess({QStringLiteral("append a"), QStringLiteral("append b")});
    EXPECT_TRUE(OpenWithSample(access, directory.path())->HasDatabase(QStringLiteral("mirel")));
    EXPECT_EQ(Contents(directory.filePath(QStringLiteral("mirel.db"))), "ab");
    EXPECT_EQ(FilesIn(directory.path()),
              (QStringList{QStringLiteral("master.db"), QStringLiteral("mirel.db")}));
}

TEST(SampleTest, ExistingDatabaseIsLeftAlone) {
    QTemporaryDir directory;
    WriteFile(directory.filePath(QStringLiteral("mirel.db")), "mine");
    OpenWithSample(FileEngineAccess({QStringLiteral("append a")}), directory.path());
    EXPECT_EQ(Contents(directory.filePath(QStringLiteral("mirel.db"))), "mine");
}

TEST(SampleTest, FailureLeavesNothingHalfMade) {
    QTemporaryDir directory;
    try {
        OpenWithSample(FileEngineAccess({QStringLiteral("append a"), QStringLiteral("fail")}),
                       directory.path());
        ADD_FAILURE() << "nothing was raised";
    } catch (const ServerError& error) {
        EXPECT_EQ(error.Description(),
                  QStringLiteral("the sample database \"mirel\" could not be made: batch 2, line "
                                 "3: no"));
    }
    EXPECT_EQ(FilesIn(directory.path()), QStringList{QStringLiteral("master.db")});
}

TEST(SampleTest, WhatAKilledTryLeftBehindIsMadeAnew) {
    QTemporaryDir directory;
    WriteFile(directory.filePath(QStringLiteral(".sample-unfinished")), "");
    WriteFile(directory.filePath(QStringLiteral("mirel.db")), "half");
    OpenWithSample(FileEngineAccess({QStringLiteral("append a")}), directory.path());
    EXPECT_EQ(Contents(directory.filePath(QStringLiteral("mirel.db"))), "a");
    EXPECT_EQ(FilesIn(directory.path()),
              (QStringList{QStringLiteral("master.db"), QStringLiteral("mirel.db")}));
}

}  // namespace quarv::localdb::server
