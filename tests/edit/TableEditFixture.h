// TableEditFixture: the table editor's pane on a shown form over a scripted database, with the
// table "t" of the fields id, sub and note. What is done in its grid is done by real events.
#pragma once

#include "base/Hooks.h"
#include "db/SQLServerConnection.h"
#include "edit/EditorHand.h"
#include "platform/ado/MemoryScript.h"
#include "platform/forms/Form.h"
#include "platform/forms/MessageHooks.h"
#include "support/BoxWatcher.h"
#include "support/Raised.h"

namespace quarv::test {

class TableEditFixture : public testing::Test, protected EditorHand {
  protected:
    using Rows = std::vector<ado::MemoryResult::Row>;

    static constexpr const char* Query = "select top 100 * from [t]";

    TableEditFixture() : EditorHand(pane_) {
        forms::RegisterMessageHooks();
        form_.Move(0, 0, 9000, 6000);
        pane_.Move(0, 0, 9000, 6000);
        form_.Show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form_));
        db_->InitOpen(QStringLiteral("Provider=sqloledb;Data Source=srv;"));
        SetTables({"t"});
        SetKey("t", {"id"});
        SetRows({});
    }
    ~TableEditFixture() override {
        QLocale::setDefault(QLocale::c());
        ProgramHooks() = Hooks();
    }

    void SetTables(const QStringList& names) {
        Rows rows;
        for (const QString& name : names) rows.push_back({u"dbo", name, u"TABLE"});
        script_->AnswerSchema(
            ado::Schema::Tables,
            ado::MemoryResult::Rows({"TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE"}, rows));
    }
    // None: no primary key, and an index over the column "note".
    void SetKey(const QString& table, const QStringList& columns) {
        Rows key;
        Rows indexes{{u"IX", u"note"}};
        for (const QString& column : columns) {
            key.push_back({column, u"PK"});
            indexes.push_back({u"PK", column});
        }
        script_->AnswerSchema(ado::Schema::PrimaryKeys, table,
                              ado::MemoryResult::Rows({"COLUMN_NAME", "PK_NAME"}, key));
        script_->AnswerSchema(ado::Schema::Indexes, table,
                              ado::MemoryResult::Rows({"INDEX_NAME", "COLUMN_NAME"}, indexes));
    }
    static ado::MemoryResult Table(Rows rows) {
        return ado::MemoryResult::Rows({"id", "sub", "note"}, std::move(rows));
    }
    void SetRows(Rows rows) { script_->Answer(Query, Table(std::move(rows))); }
    void Show() { pane_.Investigate(Query, "t", db_); }
    void Show(Rows rows) {
        SetRows(std::move(rows));
        Show();
    }

    std::shared_ptr<ado::MemoryScript> script_ = std::make_shared<ado::MemoryScript>();
    std::shared_ptr<SQLServerConnection> db_ =
        std::make_shared<SQLServerConnection>(script_->Factory());
    forms::Form form_{QStringLiteral("Form1")};
    TableEdit pane_{&form_, QStringLiteral("TableEditor")};
    BoxWatcher boxes_;
};

inline SeenBox NoteBox(const QString& text) {
    return {text, QStringLiteral("Note"), forms::BoxIcon::Information};
}

}  // namespace quarv::test
