#include "localdb/tsql/AlterDatabase.h"

#include <algorithm>
#include <array>

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

namespace {

struct Option {
    QStringView name;
    QStringView value;  // empty: the word alone
};

// As sys.databases tells of every database. Who may come in is whoever is logged in; versions of
// rows let readers pass writers.
constexpr std::array<Option, 32> Present = {{
    {u"allow_snapshot_isolation", u"off"},
    {u"ansi_null_default", u"off"},
    {u"ansi_nulls", u"off"},
    {u"ansi_padding", u"off"},
    {u"ansi_warnings", u"off"},
    {u"arithabort", u"off"},
    {u"auto_close", u"off"},
    {u"auto_create_statistics", u"on"},
    {u"auto_shrink", u"off"},
    {u"auto_update_statistics", u"on"},
    {u"auto_update_statistics_async", u"off"},
    {u"compatibility_level", u"160"},
    {u"concat_null_yields_null", u"off"},
    {u"cursor_close_on_commit", u"off"},
    {u"cursor_default", u"global"},
    {u"date_correlation_optimization", u"off"},
    {u"db_chaining", u"off"},
    {u"disable_broker", u""},
    {u"honor_broker_priority", u"off"},
    {u"multi_user", u""},
    {u"numeric_roundabort", u"off"},
    {u"online", u""},
    {u"page_verify", u"checksum"},
    {u"parameterization", u"simple"},
    {u"query_store", u"off"},
    {u"quoted_identifier", u"off"},
    {u"read_committed_snapshot", u"on"},
    {u"read_write", u""},
    {u"recovery", u"simple"},
    {u"recursive_triggers", u"off"},
    {u"target_recovery_time", u"60"},
    {u"trustworthy", u"off"},
}};

void ParseOption(TokenReader& reader) {
    if (reader.Peek().kind != TokenKind::Word) reader.Fail();
    const Token name = reader.Take();
    const auto* found = std::find_if(Present.begin(), Present.end(),
                                     [&name](const Option& o) { return name.IsWord(o.name); });
    if (found == Present.end()) {
        reader.Unsupported(QStringLiteral("ALTER DATABASE ... SET ") + name.text.toUpper(), name);
    }
    if (found->value.isEmpty()) return;
    reader.TrySign(u"=");
    const Token value = reader.Take();
    if (value.text.compare(found->value, Qt::CaseInsensitive) != 0) {
        reader.Unsupported(QStringLiteral("ALTER DATABASE ... SET ") + name.text.toUpper() + u' ' +
                               value.text.toUpper(),
                           name);
    }
    if (name.IsWord(u"target_recovery_time")) reader.ExpectWord(u"seconds");
}

// How long to wait for others, who are never in the way of these.
void ParseTermination(TokenReader& reader) {
    if (!reader.TryWord(u"with")) return;
    if (reader.TryWord(u"no_wait")) return;
    reader.ExpectWord(u"rollback");
    if (reader.TryWord(u"immediate")) return;
    reader.ExpectWord(u"after");
    reader.ExpectInteger();
    reader.TryWord(u"seconds");
}

}  // namespace

StatementPtr ParseAlterDatabase(TokenReader& reader) {
    reader.Take();
    reader.Take();
    if (reader.AtWord(u"scoped") || reader.AtWord(u"audit")) {
        reader.Unsupported(QStringLiteral("ALTER DATABASE ") + reader.Peek().text.toUpper());
    }
    auto statement = std::make_unique<AlterDatabase>();
    if (!reader.TryWord(u"current")) statement->name = reader.ExpectName();
    if (reader.TryWord(u"set")) {
        do {
            ParseOption(reader);
        } while (reader.TrySign(u","));
        ParseTermination(reader);
        return statement;
    }
    if (reader.AtWord(u"modify") && reader.AtWord(u"name", 1)) {
        reader.Take();
        reader.Take();
        reader.ExpectSign(u"=");
        statement->newName = reader.ExpectName();
        return statement;
    }
    const Token what = reader.Peek();
    for (const QStringView word : {u"modify", u"add", u"remove", u"collate"}) {
        if (!what.IsWord(word)) continue;
        reader.Unsupported(QStringLiteral("ALTER DATABASE ... ") + what.text.toUpper());
    }
    reader.Fail();
}

}  // namespace quarv::localdb::tsql
