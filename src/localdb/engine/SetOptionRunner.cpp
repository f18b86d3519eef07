#include <algorithm>
#include <array>

#include "localdb/engine/StatementRunner.h"
#include "localdb/tsql/SetOption.h"

namespace quarv::localdb::engine {

namespace {

// Options whose usual value is the only one that this server has. Another value would change
// results, so it is refused.
struct Fixed {
    QStringView name;
    QStringView value;
};

constexpr std::array<Fixed, 16> FixedOptions = {{{u"ansi_nulls", u"on"},
                                                 {u"ansi_null_dflt_on", u"on"},
                                                 {u"ansi_padding", u"on"},
                                                 {u"ansi_warnings", u"on"},
                                                 {u"ansi_defaults", u"on"},
                                                 {u"concat_null_yields_null", u"on"},
                                                 {u"quoted_identifier", u"on"},
                                                 {u"numeric_roundabort", u"off"},
                                                 {u"ansi_null_dflt_off", u"off"},
                                                 {u"arithignore", u"off"},
                                                 {u"implicit_transactions", u"off"},
                                                 {u"noexec", u"off"},
                                                 {u"parseonly", u"off"},
                                                 {u"showplan_text", u"off"},
                                                 {u"dateformat", u"mdy"},
                                                 {u"datefirst", u"7"}}};

// Options that change no result here, whatever their value.
constexpr std::array<QStringView, 8> Harmless = {u"arithabort",
                                                 u"textsize",
                                                 u"lock_timeout",
                                                 u"deadlock_priority",
                                                 u"cursor_close_on_commit",
                                                 u"no_browsetable",
                                                 u"query_governor_cost_limit",
                                                 u"transaction isolation level"};

[[noreturn]] void Refuse(const QString& name, const QString& value) {
    throw SqlError(40517, {QStringLiteral("SET %1 %2").arg(name, value).toUpper()});
}

bool OnOff(const QString& name, const QString& value) {
    if (value != u"on" && value != u"off") Refuse(name, value);
    return value == u"on";
}

void SetIdentityInsert(const tsql::SetOption& node, Frame& frame) {
    SessionOptions& options = frame.Session().options;
    const bool on = OnOff(node.names.front(), node.value);
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(node.table);
    const std::optional<ObjectInfo> object = metadata.Find(node.table.schema, node.table.name);
    if (!object || object->type != u"U") throw SqlError(1088, {node.table.ToText()});
    if (!metadata.LoadTable(*object).identity) throw SqlError(8106, {node.table.ToText()});
    const bool same = options.identityInsertTable == object->id &&
                      options.identityInsertDatabase == metadata.Database().id;
    if (on && options.identityInsertTable != 0 && !same) {
        const std::optional<ObjectInfo> other = metadata.Find(options.identityInsertTable);
        const QString name =
            other ? metadata.Database().name + u'.' + other->schema + u'.' + other->name
                  : QString();
        throw SqlError(8107, {name, node.table.ToText()});
    }
    if (on || same) options.identityInsertTable = on ? object->id : 0;
    if (on) options.identityInsertDatabase = metadata.Database().id;
}

void SetOne(const QString& name, const tsql::SetOption& node, Frame& frame) {
    SessionOptions& options = frame.Session().options;
    if (name == u"nocount") {
        options.noCount = OnOff(name, node.value);
    } else if (name == u"xact_abort") {
        options.xactAbort = OnOff(name, node.value);
    } else if (name == u"rowcount") {
        bool fits = false;
        const qlonglong rows = node.value.toLongLong(&fits);
        if (!fits || rows < 0) Refuse(name, node.value);
        options.rowCount = rows;
    } else if (name == u"identity_insert") {
        SetIdentityInsert(node, frame);
    } else if (name == u"language") {
        if (node.value != u"us_english" && node.value != u"english") Refuse(name, node.value);
    } else if (std::find(Harmless.begin(), Harmless.end(), name) == Harmless.end()) {
        const auto* fixed = std::find_if(FixedOptions.begin(), FixedOptions.end(),
                                         [&name](const Fixed& f) { return f.name == name; });
        if (fixed == FixedOptions.end()) throw SqlError(195, {name, QStringLiteral("SET option")});
        if (fixed->value != node.value) Refuse(name, node.value);
    }
}

}  // namespace

void RunSetOption(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::SetOption&>(statement);
    for (const QString& name : node.names) SetOne(name, node, frame);
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
