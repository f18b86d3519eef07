// Runs the T-SQL cases of tests/localdb/tsql/cases: each is one or more batches and the lines that
// a client is to see. The format is told in that folder's README.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "TestServer.h"
#include "support/TextPrinter.h"

namespace quarv::localdb::engine {

namespace {

struct Case {
    QString file;
    QString name;
    int line = 0;
    QStringList setup;  // batches
    QStringList batches;
    QStringList expected;
};

// GoogleTest shows this where a case fails.
void PrintTo(const Case& c, std::ostream* out) {
    *out << c.file.toStdString() << ':' << c.line << " (" << c.name.toStdString() << ')';
}

QStringList SplitBatches(const QStringList& lines) {
    QStringList batches;
    QStringList batch;
    for (const QString& line : lines) {
        if (line == u"GO") {
            batches += batch.join(u'\n');
            batch.clear();
        } else {
            batch += line;
        }
    }
    batches += batch.join(u'\n');
    return batches;
}

class Reader {
  public:
    explicit Reader(const QString& path) : path_(path) {}

    std::vector<Case> Read() {
        QFile file(path_);
        if (!file.open(QIODevice::ReadOnly)) return {};
        QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        lines += QStringLiteral("## end");
        int number = 0;
        for (const QString& line : lines) Take(line, ++number);
        return cases_;
    }

  private:
    void Take(const QString& line, int number) {
        if (line.startsWith(QStringLiteral("## "))) {
            Finish();
            name_ = line.mid(3);
            line_ = number;
            input_.clear();
            expected_.clear();
            inExpected_ = false;
        } else if (line == u"----") {
            inExpected_ = true;
        } else if (inExpected_) {
            if (!line.isEmpty()) expected_ += line;
        } else {
            input_ += line;
        }
    }
    void Finish() {
        if (name_ == u"setup") {
            setup_ = SplitBatches(input_);
        } else if (!name_.isEmpty()) {
            cases_.push_back({QFileInfo(path_).fileName(), name_, line_, setup_,
                              SplitBatches(input_), expected_});
        }
    }

    QString path_;
    QString name_;
    int line_ = 0;
    bool inExpected_ = false;
    QStringList input_, expected_, setup_;
    std::vector<Case> cases_;
};

std::vector<Case> AllCases() {
    std::vector<Case> all;
    const QDir directory(QStringLiteral(CASES_DIRECTORY));
    for (const QString& name : directory.entryList({QStringLiteral("*.txt")}, QDir::Files)) {
        for (const Case& c : Reader(directory.filePath(name)).Read()) all.push_back(c);
    }
    return all;
}

std::string NameOf(const testing::TestParamInfo<Case>& info) {
    std::string name;
    const QString text = info.param.file.chopped(4) + u'_' + info.param.name;
    for (const QChar unit : text) {
        const bool plain = unit.unicode() < 128 && unit.isLetterOrNumber();
        name += plain ? static_cast<char>(unit.unicode()) : '_';
    }
    return name;
}

}  // namespace

class CaseFile : public testing::TestWithParam<Case> {};

TEST_P(CaseFile, ShowsWhatIsWritten) {
    const Case& c = GetParam();
    TestServer server;
    const std::unique_ptr<Session> session = server.NewDatabase(QStringLiteral("cases"));
    for (const QString& batch : c.setup) {
        RecordingSink sink;
        session->RunBatch(batch, sink);
        ASSERT_EQ(sink.FirstError(), 0) << "setup: " << sink.Text().toStdString();
    }
    RecordingSink sink;
    for (const QString& batch : c.batches) session->RunBatch(batch, sink);
    EXPECT_EQ(sink.Text().toStdString(), c.expected.join(u'\n').toStdString())
        << CASES_DIRECTORY << '/' << c.file.toStdString() << ':' << c.line;
}

INSTANTIATE_TEST_SUITE_P(Tsql, CaseFile, testing::ValuesIn(AllCases()), NameOf);

TEST(CaseFiles, AreFound) {
    EXPECT_GT(AllCases().size(), 100u);
}

}  // namespace quarv::localdb::engine
