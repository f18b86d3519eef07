// Runs the T-SQL cases of tests/localdb/tsql/cases: each is one or more batches and the lines that
// a client is to see. The format is told in that folder's README.
#include <gtest/gtest.h>

#include "CaseFile.h"
#include "TestServer.h"
#include "support/TextPrinter.h"

namespace quarv::localdb::engine {

// GoogleTest shows this where a case fails.
void PrintTo(const Case& c, std::ostream* out) {
    *out << c.file.toStdString() << ':' << c.line << " (" << c.name.toStdString() << ')';
}

namespace {

std::vector<Case> AllCases() {
    return ReadCases(QStringLiteral(CASES_DIRECTORY));
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
