#include <array>

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/SetOption.h"

namespace quarv::localdb::engine {

namespace {

// One SET of one option; its value is in lower case, a variable's too.
struct Setting {
    const QString& name;
    const QString& value;
    const tsql::SetOption& node;
    Frame& frame;
    ResultSink& sink;
};

[[noreturn]] void Refuse(const Setting& setting) {
    throw SqlError(40517, {QStringLiteral("SET %1 %2").arg(setting.name, setting.value).toUpper()});
}

bool OnOff(const Setting& setting) {
    if (setting.value != u"on" && setting.value != u"off") {
        throw SqlError(102, {setting.value});
    }
    return setting.value == u"on";
}

int64_t Number(const Setting& setting) {
    bool fits = false;
    const int number = setting.value.toInt(&fits);
    if (!fits) throw SqlError(102, {setting.value});
    return number;
}

template <bool SessionOptions::*Option>
void SetFlag(const Setting& setting) {
    setting.frame.Session().options.*Option = OnOff(setting);
}

// The only value that this server has; another one would change results.
template <bool On>
void CheckFixed(const Setting& setting) {
    if (OnOff(setting) != On) Refuse(setting);
}

// Changes no result, whatever it is.
void CheckOnOff(const Setting& setting) {
    OnOff(setting);
}

void CheckNumber(const Setting& setting) {
    Number(setting);
}

void CheckPriority(const Setting& setting) {
    for (const QStringView word : {u"low", u"normal", u"high"}) {
        if (setting.value == word) return;
    }
    const int64_t priority = Number(setting);
    if (priority < -10 || priority > 10) throw SqlError(102, {setting.value});
}

void SetRowCount(const Setting& setting) {
    const int64_t rows = Number(setting);
    if (rows < 0) throw SqlError(102, {QStringLiteral("-")});
    setting.frame.Session().options.rowCount = rows;
}

void SetTextSize(const Setting& setting) {
    constexpr int Usual = 4096;
    const auto size = static_cast<int>(Number(setting));
    SessionOptions& options = setting.frame.Session().options;
    // "SET TEXTSIZE": 0 stands for 4 KB, -1 for no limit.
    options.textSize = size == 0 ? Usual : size < 0 ? SessionOptions().textSize : size;
}

void SetLockTimeout(const Setting& setting) {
    const auto milliseconds = static_cast<int>(Number(setting));
    if (milliseconds < -1) throw SqlError(102, {setting.value});
    setting.frame.Session().options.lockTimeout = milliseconds;
    setting.frame.Session().store.SetLockTimeout(milliseconds);
}

void SetDateFirst(const Setting& setting) {
    const int64_t day = Number(setting);
    if (day < 1 || day > 7) throw SqlError(2742, {setting.value});
    setting.frame.Session().options.dateFirst = static_cast<int>(day);
}

void SetDateFormat(const Setting& setting) {
    if (setting.value == u"mdy") return;
    for (const QStringView order : {u"dmy", u"ymd", u"ydm", u"myd", u"dym"}) {
        if (setting.value == order) Refuse(setting);
    }
    throw SqlError(2741, {setting.value});
}

void SetLanguage(const Setting& setting) {
    if (setting.value != u"us_english" && setting.value != u"english") Refuse(setting);
    // Its week begins on Sunday.
    setting.frame.Session().options.dateFirst = SessionOptions().dateFirst;
    Message message = SqlError(5703, {QStringLiteral("us_english")}).What();
    message.line = setting.node.line;
    message.procedure = setting.frame.Procedure();
    setting.sink.Say(message);
}

void SetIdentityInsert(const Setting& setting) {
    const tsql::ObjectName& table = setting.node.table;
    SessionOptions& options = setting.frame.Session().options;
    const bool on = OnOff(setting);
    BindContext context = setting.frame.NewContext();
    Metadata metadata = context.MetadataFor(table);
    const std::optional<ObjectInfo> object = metadata.Find(table.schema, table.name);
    if (!object || object->type != u"U") throw SqlError(1088, {table.ToText()});
    if (!metadata.LoadTable(*object).identity) throw SqlError(8106, {table.ToText()});
    const bool same = options.identityInsertTable == object->id &&
                      options.identityInsertDatabase == metadata.Database().id;
    if (on && options.identityInsertTable != 0 && !same) {
        const std::optional<ObjectInfo> other = metadata.Find(options.identityInsertTable);
        const QString name =
            other ? metadata.Database().name + u'.' + other->schema + u'.' + other->name
                  : QString();
        throw SqlError(8107, {name, table.ToText()});
    }
    if (on || same) options.identityInsertTable = on ? object->id : 0;
    if (on) options.identityInsertDatabase = metadata.Database().id;
}

void SetIsolation(const Setting& setting) {
    // What others have not committed is seen by nobody, READ UNCOMMITTED included.
    const bool oneState = !setting.value.startsWith(u"read ");
    setting.frame.Session().options.oneState = oneState;
    setting.frame.Session().transactions.SetOneState(oneState);
}

void SetContextInfo(const Setting& setting) {
    constexpr int Size = 128;
    if (!setting.node.operand) throw SqlError(102, {setting.value});
    const OwnedValue bytes =
        setting.frame.Compute(*setting.node.operand, MakeType(TypeKind::Binary, Size));
    setting.frame.Session().contextInfo = std::string(bytes.View().text);
    setting.frame.Session().contextInfo.resize(Size);
}

struct Option {
    QStringView name;
    void (*set)(const Setting&);
};

constexpr std::array<Option, 41> Options = {{
    {u"ansi_defaults", Refuse},
    {u"ansi_null_dflt_off", CheckFixed<false>},
    {u"ansi_null_dflt_on", CheckFixed<true>},
    {u"ansi_nulls", CheckFixed<true>},
    {u"ansi_padding", CheckFixed<true>},
    {u"ansi_warnings", CheckFixed<true>},
    // Neither counts for anything while ANSI_WARNINGS is on.
    {u"arithabort", SetFlag<&SessionOptions::arithAbort>},
    {u"arithignore", SetFlag<&SessionOptions::arithIgnore>},
    {u"concat_null_yields_null", CheckFixed<true>},
    {u"context_info", SetContextInfo},
    {u"cursor_close_on_commit", SetFlag<&SessionOptions::cursorCloseOnCommit>},
    {u"datefirst", SetDateFirst},
    {u"dateformat", SetDateFormat},
    {u"deadlock_priority", CheckPriority},
    {u"fips_flagger", CheckFixed<false>},
    {u"fmtonly", CheckFixed<false>},
    {u"forceplan", CheckOnOff},
    {u"identity_insert", SetIdentityInsert},
    {u"implicit_transactions", SetFlag<&SessionOptions::implicitTransactions>},
    {u"language", SetLanguage},
    {u"lock_timeout", SetLockTimeout},
    {u"no_browsetable", CheckOnOff},
    {u"nocount", SetFlag<&SessionOptions::noCount>},
    {u"noexec", SetFlag<&SessionOptions::noExec>},
    {u"numeric_roundabort", CheckFixed<false>},
    {u"offsets", Refuse},
    {u"parseonly", CheckFixed<false>},
    {u"query_governor_cost_limit", CheckNumber},
    {u"quoted_identifier", CheckFixed<true>},
    {u"remote_proc_transactions", CheckFixed<false>},
    {u"rowcount", SetRowCount},
    {u"showplan_all", CheckFixed<false>},
    {u"showplan_text", CheckFixed<false>},
    {u"showplan_xml", CheckFixed<false>},
    {u"statistics io", CheckFixed<false>},
    {u"statistics profile", CheckFixed<false>},
    {u"statistics time", CheckFixed<false>},
    {u"statistics xml", CheckFixed<false>},
    {u"textsize", SetTextSize},
    {u"transaction isolation level", SetIsolation},
    {u"xact_abort", SetFlag<&SessionOptions::xactAbort>},
}};

void SetOne(const Setting& setting) {
    // With NOEXEC nothing runs but what ends it.
    if (setting.frame.Session().options.noExec && setting.name != u"noexec") return;
    for (const Option& option : Options) {
        if (option.name == setting.name) return option.set(setting);
    }
    throw SqlError(195, {setting.name, QStringLiteral("SET option")});
}

}  // namespace

void RunSetOption(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::SetOption&>(statement);
    QString value = node.value;
    if (node.operand && node.names.constFirst() != u"context_info") {
        const SqlType text = MakeType(TypeKind::NVarChar, 128);
        value = FromUtf8(frame.Compute(*node.operand, text).View().text).toLower();
    }
    for (const QString& name : node.names) SetOne({name, value, node, frame, sink});
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
