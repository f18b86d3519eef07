#include "platform/forms/RowReader.h"

#include <gtest/gtest.h>

#include "ScriptedRowSource.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

class RowReaderTest : public testing::Test {
  protected:
    ScriptedRowSource source{{u"a"_qs}, 100};
    RowReader reader;
    Errors errors;

    void SetUp() override { reader.SetSource(&source); }
};

TEST_F(RowReaderTest, WithoutASourceIsAtTheEnd) {
    reader.SetSource(nullptr);
    EXPECT_TRUE(reader.AtEnd());
    EXPECT_EQ(reader.RowCount(), 0);
    reader.ReadTo(5, errors);
    EXPECT_TRUE(errors.empty());
}

TEST_F(RowReaderTest, ReadsToTheRowAndNoFurther) {
    reader.ReadTo(7, errors);
    EXPECT_EQ(reader.RowCount(), 8);
    reader.ReadTo(5, errors);
    EXPECT_EQ(source.calls, 1);
}

TEST_F(RowReaderTest, ReadsOverErrors) {
    source.RaiseBefore(2, Error(1, u"one"_qs));
    source.RaiseBefore(4, Error(2, u"two"_qs));
    reader.ReadTo(7, errors);
    EXPECT_EQ(reader.RowCount(), 8);
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].Description(), u"one"_qs);
    EXPECT_EQ(errors[1].Number(), 2);
}

TEST_F(RowReaderTest, DoesNotRunWithinItself) {
    source.onRead = [this] { reader.ReadTo(90, errors); };
    reader.ReadTo(7, errors);
    EXPECT_EQ(source.calls, 1);
    EXPECT_EQ(source.greatest, 7);
}

TEST_F(RowReaderTest, LeavesASourceThatDoesNotGoOn) {
    class Stuck : public ScriptedRowSource {
      public:
        using ScriptedRowSource::ScriptedRowSource;
        void ReadTo(qint64) override { ++calls; }
    } stuck({u"a"_qs}, 100);
    reader.SetSource(&stuck);
    reader.ReadTo(7, errors);
    EXPECT_EQ(stuck.calls, 1);
}

struct Plan {
    qint64 top;
    qint64 screen;
    qint64 rowCount;
    qint64 wanted;
};

class Plans : public testing::TestWithParam<Plan> {};

INSTANTIATE_TEST_SUITE_P(, Plans,
                         testing::Values(Plan{0, 10, 0, 19}, Plan{0, 10, 20, -1},
                                         Plan{1, 10, 20, 30}, Plan{1, 10, 31, -1},
                                         Plan{11, 10, 31, -1}, Plan{12, 10, 31, 41},
                                         Plan{100, 1, 0, 101}, Plan{0, 10, 5, 29}));

TEST_P(Plans, KeepAScreenAhead) {
    const Plan& plan = GetParam();
    EXPECT_EQ(RowReader::RowWanted(plan.top, plan.screen, plan.rowCount), plan.wanted);
}

}  // namespace
}  // namespace quarv::forms
