#include "localdb/catalog/SystemCatalog.h"

#include <gtest/gtest.h>

namespace quarv::localdb::catalog {
namespace {

TEST(SystemCatalogTest, NamesAreFoundInAnyLetterCase) {
    const SystemCatalog catalog;
    ASSERT_NE(catalog.FindProcedure(QStringLiteral("SP_Tables")), nullptr);
    EXPECT_EQ(catalog.FindProcedure(QStringLiteral("sp_nothing")), nullptr);
    const engine::SystemView* view =
        catalog.FindView(QStringLiteral("Information_Schema"), QStringLiteral("columns"));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->name, QStringLiteral("COLUMNS"));
}

TEST(SystemCatalogTest, OnlyOldViewsAreFoundWithoutASchema) {
    const SystemCatalog catalog;
    EXPECT_NE(catalog.FindView({}, QStringLiteral("SYSOBJECTS")), nullptr);
    EXPECT_NE(catalog.FindView(QStringLiteral("DBO"), QStringLiteral("sysobjects")), nullptr);
    EXPECT_EQ(catalog.FindView({}, QStringLiteral("objects")), nullptr);
    EXPECT_EQ(catalog.FindView(QStringLiteral("dbo"), QStringLiteral("COLUMNS")), nullptr);
    EXPECT_EQ(catalog.FindView(QStringLiteral("sys"), QStringLiteral("ROUTINES")), nullptr);
}

TEST(SystemCatalogTest, ViewsComeBySchemaAndName) {
    const SystemCatalog catalog;
    QString before;
    for (const engine::SystemView& view : catalog.Views()) {
        const QString now = (view.schema + u'.' + view.name).toCaseFolded();
        EXPECT_LT(before, now);
        before = now;
        EXPECT_GT(view.columns.size(), 0u);
    }
}

}  // namespace
}  // namespace quarv::localdb::catalog
