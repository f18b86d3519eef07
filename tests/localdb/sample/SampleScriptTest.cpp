#include "localdb/sample/SampleScript.h"

#include <gtest/gtest.h>

namespace quarv::localdb::sample {
namespace {

TEST(SampleScript, EveryBatchHoldsAStatementAndNoSeparator) {
    const QStringList batches = SampleBatches();
    ASSERT_GT(batches.size(), 10);
    for (const QString& batch : batches) {
        EXPECT_TRUE(batch.contains(QStringLiteral("CREATE ")) ||
                    batch.contains(QStringLiteral("INSERT ")))
            << batch.toStdString();
        EXPECT_FALSE(batch.contains(QStringLiteral("\nGO\n"))) << batch.toStdString();
    }
}

TEST(SampleScript, TextBeyondLatinSurvivesTheResource) {
    EXPECT_TRUE(SampleScript().contains(QStringLiteral("N'宇治茶園'")));
    EXPECT_TRUE(SampleScript().contains(QStringLiteral("抹茶 Matcha 🍵")));
}

TEST(SampleScript, BatchesKeepTheirOrder) {
    const QStringList batches = SampleBatches();
    EXPECT_TRUE(batches.first().contains(QStringLiteral("CREATE TYPE PlaceName")));
    EXPECT_TRUE(batches.last().contains(QStringLiteral("CREATE PROCEDURE OrdersOfCustomer")));
}

}  // namespace
}  // namespace quarv::localdb::sample
