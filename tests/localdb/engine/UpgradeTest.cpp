// Files of other formats: one of the first format is brought to the present one, whole or not at
// all; one of a format that is not known yet is left alone.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>

#include "TestServer.h"
#include "localdb/engine/DatabaseFile.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StorageCollations.h"
#include "support/Raised.h"

namespace quarv::localdb::engine {

namespace {

// A database of format 1 as the server left it: table "people" with an identity as its key (t
// 100001), an unnamed default and a unique index, table "parts" with a key of two columns, a view
// and a procedure. Types are packed: number, precision << 8, scale << 16, (length + 1) << 24.
const char* const FirstFormat = R"sql(
CREATE TABLE q_meta(key TEXT PRIMARY KEY, value) WITHOUT ROWID;
INSERT INTO q_meta VALUES ('format', 1), ('next_object', 100010), ('created', 0), ('name', 'old');

CREATE TABLE q_schemas(schema_id INTEGER PRIMARY KEY, name TEXT NOT NULL COLLATE tsql);
INSERT INTO q_schemas VALUES (1, 'dbo'), (2, 'guest'), (3, 'INFORMATION_SCHEMA'), (4, 'sys');

CREATE TABLE q_objects(object_id INTEGER PRIMARY KEY, schema_id INTEGER NOT NULL,
    parent_id INTEGER NOT NULL DEFAULT 0, type TEXT NOT NULL, name TEXT NOT NULL COLLATE tsql,
    created INTEGER NOT NULL, modified INTEGER NOT NULL, definition TEXT);
CREATE UNIQUE INDEX q_objects_name ON q_objects(name, schema_id);
CREATE INDEX q_objects_parent ON q_objects(parent_id) WHERE parent_id <> 0;
CREATE INDEX q_objects_type ON q_objects(type, schema_id, name);
INSERT INTO q_objects VALUES
    (100001, 1, 0, 'U', 'people', 0, 0, NULL),
    (100002, 1, 100001, 'D', 'DF__people__name__06A40C01', 0, 0, '(N''nobody'')'),
    (100003, 1, 100001, 'PK', 'PK_people', 0, 0, NULL),
    (100004, 1, 0, 'U', 'parts', 0, 0, NULL),
    (100005, 1, 100004, 'PK', 'PK__parts____00000000186A4001', 0, 0, NULL),
    (100006, 1, 0, 'V', 'names', 0, 0, 'create view names as select name from people'),
    (100007, 1, 0, 'P', 'ask', 0, 0, 'create procedure ask @x int = 4 as select @x x');

CREATE TABLE q_columns(object_id INTEGER NOT NULL, column_id INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE tsql, type INTEGER NOT NULL, nullable INTEGER NOT NULL,
    default_id INTEGER NOT NULL DEFAULT 0, is_sysname INTEGER NOT NULL DEFAULT 0,
    PRIMARY KEY(object_id, column_id)) WITHOUT ROWID;
INSERT INTO q_columns VALUES
    (100001, 1, 'id', 16777272, 0, 0, 0),
    (100001, 2, 'name', 352321767, 1, 100002, 0),
    (100004, 1, 'a', 16777272, 0, 0, 0),
    (100004, 2, 'b', 16777272, 0, 0, 0),
    (100004, 3, 'n', 16777272, 1, 0, 0),
    (100006, 1, 'name', 352321767, 1, 0, 0);

CREATE TABLE q_identity(object_id INTEGER PRIMARY KEY, column_id INTEGER NOT NULL,
    seed INTEGER NOT NULL, increment INTEGER NOT NULL, last INTEGER);
INSERT INTO q_identity VALUES (100001, 1, 10, 10, 20);

CREATE TABLE q_indexes(object_id INTEGER NOT NULL, index_id INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE tsql, is_unique INTEGER NOT NULL, is_clustered INTEGER NOT NULL,
    constraint_id INTEGER NOT NULL DEFAULT 0, PRIMARY KEY(object_id, index_id)) WITHOUT ROWID;
INSERT INTO q_indexes VALUES
    (100001, 1, 'PK_people', 1, 1, 100003),
    (100001, 2, 'UX_name', 1, 0, 0),
    (100004, 1, 'PK__parts____00000000186A4001', 1, 1, 100005);

CREATE TABLE q_index_columns(object_id INTEGER NOT NULL, index_id INTEGER NOT NULL,
    key_no INTEGER NOT NULL, column_id INTEGER NOT NULL, descending INTEGER NOT NULL,
    PRIMARY KEY(object_id, index_id, key_no)) WITHOUT ROWID;
INSERT INTO q_index_columns VALUES (100001, 1, 1, 1, 0), (100001, 2, 1, 2, 0),
    (100004, 1, 1, 1, 0), (100004, 1, 2, 2, 0);

CREATE TABLE q_parameters(object_id INTEGER NOT NULL, parameter_id INTEGER NOT NULL,
    name TEXT NOT NULL COLLATE tsql, type INTEGER NOT NULL, is_output INTEGER NOT NULL,
    default_text TEXT, PRIMARY KEY(object_id, parameter_id)) WITHOUT ROWID;
INSERT INTO q_parameters VALUES (100007, 1, '@x', 16777272, 0, '4');

CREATE TABLE t100001(c1 INTEGER, c2 TEXT COLLATE tsql, PRIMARY KEY(c1));
CREATE UNIQUE INDEX i100001_2 ON t100001(c2);
CREATE UNIQUE INDEX n100001_2 ON t100001((c2 IS NULL), ifnull(c2, 0) COLLATE tsql)
    WHERE (c2 IS NULL);
INSERT INTO t100001 VALUES (10, 'Ann'), (20, 'Bob');
CREATE TABLE t100004(c1 INTEGER, c2 INTEGER, c3 INTEGER, PRIMARY KEY(c1, c2)) WITHOUT ROWID;
INSERT INTO t100004 VALUES (2, 1, 21), (1, 2, 12);
)sql";

class OldFile {
  public:
    explicit OldFile(const QString& path) {
        sqlite3_open(path.toUtf8().constData(), &handle_);
        RegisterCollations(handle_);
    }
    ~OldFile() { sqlite3_close(handle_); }
    OldFile(const OldFile&) = delete;
    OldFile& operator=(const OldFile&) = delete;

    void Run(const char* sql) {
        char* error = nullptr;
        sqlite3_exec(handle_, sql, nullptr, nullptr, &error);
        EXPECT_STREQ(error, nullptr);
        sqlite3_free(error);
    }
    int64_t Number(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr);
        const int64_t value =
            sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : -1;
        sqlite3_finalize(statement);
        return value;
    }

  private:
    sqlite3* handle_ = nullptr;
};

// The closed server's database "old" is a file of format 1 now; gives its path.
QString MakeOld(TestServer& server) {
    server.NewDatabase(QStringLiteral("old"));
    server.Close();
    const QString pattern = QStringLiteral("old-*.sqlite");
    const QString path =
        server.Path() + u'/' + QDir(server.Path()).entryList({pattern}, QDir::Files).value(0);
    DatabaseFile::Remove(path);
    OldFile(path).Run(FirstFormat);
    return path;
}

constexpr const char* Format = "SELECT value FROM q_meta WHERE key = 'format'";

QStringList Shown(Session& session, const char* batch) {
    return Lines(session, QString::fromUtf8(batch));
}

}  // namespace

TEST(Upgrade, AFileOfTheFirstFormatKeepsWhatItHolds) {
    TestServer server;
    const QString path = MakeOld(server);
    server.Open();
    EXPECT_EQ(OldFile(path).Number(Format), 2);
    const auto session = server.NewSession();
    session->UseDatabase(QStringLiteral("old"));
    EXPECT_EQ(Shown(*session, "insert people default values select * from people"),
              QStringList({QStringLiteral("(1 row)"),
                           QStringLiteral("columns id int not null identity, name nvarchar(20)"),
                           QStringLiteral("10 | Ann"), QStringLiteral("20 | Bob"),
                           QStringLiteral("30 | nobody"), QStringLiteral("(3 rows)")}));
    EXPECT_EQ(Shown(*session, "select n from parts").mid(1, 2),
              QStringList({QStringLiteral("12"), QStringLiteral("21")}));
    EXPECT_EQ(Shown(*session, "select count(*) c from names").value(1), u"3");
    EXPECT_EQ(Shown(*session, "exec ask").value(1), u"4");
}

TEST(Upgrade, WhatIsNewWorksInAnOldFile) {
    TestServer server;
    MakeOld(server);
    server.Open();
    const auto session = server.NewSession();
    session->UseDatabase(QStringLiteral("old"));
    const auto errorOf = [&session](const char* batch) {
        RecordingSink sink;
        session->RunBatch(QString::fromUtf8(batch), sink);
        return sink.FirstError();
    };
    EXPECT_EQ(errorOf("insert people values ('ANN')"), 2601);
    EXPECT_EQ(errorOf("insert parts values (1, 2, 3)"), 2627);
    EXPECT_EQ(errorOf("alter table parts add constraint FK_a foreign key (n) references "
                      "people(id)"),
              547);
    EXPECT_EQ(errorOf("alter table people drop constraint PK_people"), 0);
    EXPECT_EQ(errorOf("alter table people add age int check (age > 0), twice as age * 2"), 0);
    EXPECT_EQ(errorOf("insert people(name, age) values ('x', 0)"), 547);
    // Columns that are new take numbers behind all that the old file ever gave.
    EXPECT_EQ(Shown(*session, "select col_name(object_id('people'), 3) c").value(1), u"age");
}

TEST(Upgrade, AFileIsUpgradedWholeOrNotAtAll) {
    TestServer server;
    const QString path = MakeOld(server);
    OldFile(path).Run("CREATE TABLE q_checks(x)");
    server.Open();
    const auto session = server.NewSession();
    EXPECT_EQ(Raised([&] { session->UseDatabase(QStringLiteral("old")); }), 945);
    OldFile file(path);
    EXPECT_EQ(file.Number(Format), 1);
    EXPECT_EQ(file.Number("SELECT count(*) FROM sqlite_master WHERE name = 'q_types'"), 0);
    EXPECT_EQ(file.Number("SELECT count(*) FROM pragma_table_info('q_objects')"), 8);
}

TEST(Upgrade, AFileOfANewerFormatIsRefusedAndLeftAlone) {
    TestServer server;
    const QString path = MakeOld(server);
    server.Open();
    server.Close();
    OldFile(path).Run("UPDATE q_meta SET value = 3 WHERE key = 'format'");
    server.Open();
    const auto session = server.NewSession();
    EXPECT_EQ(Raised([&] { session->UseDatabase(QStringLiteral("old")); }), 945);
    RecordingSink sink;
    session->RunBatch(QStringLiteral("select * from old..people"), sink);
    EXPECT_EQ(sink.FirstError(), 945);
    EXPECT_EQ(OldFile(path).Number(Format), 3);
    session->UseDatabase(QStringLiteral("master"));
}

}  // namespace quarv::localdb::engine
