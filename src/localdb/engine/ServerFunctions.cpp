// The functions that tell about the server, its databases and who is logged in. One person has the
// server: the login is its administrator and every database's owner.
#include <array>

#include "localdb/engine/Collation.h"
#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/Server.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SystemVariables.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

namespace {

SqlValue Keep(const QString& text, const Evaluation& evaluation) {
    return text.isNull() ? SqlValue() : SqlValue::Text(evaluation.arena->Keep(ToUtf8(text)));
}

QString Lower(const SqlValue& value) {
    return FromUtf8(WithoutTrailingBlanks(value.text)).toLower();
}

// A property is a text or a number; of neither there is none.
struct Property {
    QStringView name;
    const char16_t* text;
    int64_t number;
};

constexpr int Locale = 1033;  // us_english

constexpr std::array<Property, 19> ServerTable = {{
    {u"productlevel", u"RTM", 0},
    {u"edition", u"Express Edition (64-bit)", 0},
    {u"editionid", nullptr, -1592396055},
    {u"engineedition", nullptr, 4},
    {u"productmajorversion", u"16", 0},
    {u"productminorversion", u"0", 0},
    {u"productbuild", u"1000", 0},
    {u"productversion", u"16.0.1000.0", 0},
    {u"licensetype", u"DISABLED", 0},
    {u"isclustered", nullptr, 0},
    {u"isfulltextinstalled", nullptr, 0},
    {u"isintegratedsecurityonly", nullptr, 0},
    {u"islocaldb", nullptr, 1},
    {u"issingleuser", nullptr, 0},
    {u"ishadrenabled", nullptr, 0},
    {u"isxtpsupported", nullptr, 0},
    {u"lcid", nullptr, Locale},
    {u"sqlcharsetname", u"iso_1", 0},
    {u"sqlsortordername", u"nocase_iso", 0},
}};

constexpr std::array<Property, 22> DatabaseTable = {{
    {u"status", u"ONLINE", 0},
    {u"updateability", u"READ_WRITE", 0},
    {u"useraccess", u"MULTI_USER", 0},
    {u"recovery", u"SIMPLE", 0},
    {u"version", nullptr, 957},
    {u"isautoclose", nullptr, 0},
    {u"isautoshrink", nullptr, 0},
    {u"isautocreatestatistics", nullptr, 1},
    {u"isautoupdatestatistics", nullptr, 1},
    {u"isansinulldefault", nullptr, 0},
    {u"isansinullsenabled", nullptr, 0},
    {u"isansipaddingenabled", nullptr, 0},
    {u"isansiwarningsenabled", nullptr, 0},
    {u"isquotedidentifiersenabled", nullptr, 0},
    {u"isfulltextenabled", nullptr, 0},
    {u"isinstandby", nullptr, 0},
    {u"ismergepublished", nullptr, 0},
    {u"ispublished", nullptr, 0},
    {u"isrecursivetriggersenabled", nullptr, 0},
    {u"istornpagedetectionenabled", nullptr, 0},
    {u"sqlsortorder", nullptr, 52},
    {u"lcid", nullptr, Locale},
}};

const Property* FindProperty(std::span<const Property> table, const QString& name) {
    for (const Property& entry : table) {
        if (entry.name == name) return &entry;
    }
    return nullptr;
}

// The collation and the names, which are no constants.
QString TextProperty(const QString& name) {
    if (name == u"collation") return QString::fromLatin1(Collation::Name);
    const bool machine = name == u"machinename" || name == u"computernamephysicalnetbios";
    return machine || name == u"servername" ? Server::Name() : QString();
}

// A property's type depends on its name, so that this has to be known.
BoundPtr BindProperty(std::span<const Property> table, const BoundExpression& name) {
    if (!name.IsConstant()) {
        throw SqlError(40517, {QStringLiteral("property that is no constant")});
    }
    const QString word = ConstantWord(name);
    const Property* property = FindProperty(table, word);
    if (property && !property->text) return MakeAnswer(property->number, IntType());
    const QString text = property ? QString::fromUtf16(property->text) : TextProperty(word);
    return MakeAnswer(text, SysnameType());
}

BoundPtr BindServerProperty(Arguments arguments) {
    return BindProperty(ServerTable, *arguments[0]);
}

SqlValue IfDatabase(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const SqlValue id = evaluation.environment->DatabaseIdOf(FromUtf8(a[0].text));
    return id.IsNull() ? SqlValue() : a[1];
}

BoundPtr BindDatabaseProperty(Arguments arguments) {
    BoundPtr answer = BindProperty(DatabaseTable, *arguments[1]);
    const SqlType type = answer->type;
    Arguments parts;
    parts.push_back(ExpressionBinder::Convert(std::move(arguments[0]), SysnameType()));
    parts.push_back(std::move(answer));
    return MakeNullableCall(IfDatabase, type, std::move(parts));
}

SqlValue HasDatabaseAccess(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const SqlValue id = evaluation.environment->DatabaseIdOf(FromUtf8(a[0].text));
    return id.IsNull() ? SqlValue() : SqlValue::Integer(1);
}

constexpr std::array<QStringView, 5> Users = {u"public", u"dbo", u"guest", u"INFORMATION_SCHEMA",
                                              u"sys"};

SqlValue UserId(const BoundCall& call, const SqlValue* a, const Evaluation&) {
    if (call.parts.empty()) return SqlValue::Integer(1);
    const QString name = FromUtf8(a[0].text);
    for (size_t i = 0; i < Users.size(); ++i) {
        if (Users[i].compare(name, Qt::CaseInsensitive) == 0) {
            return SqlValue::Integer(static_cast<int64_t>(i));
        }
    }
    return {};
}

SqlValue UserName(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const int64_t id = a[0].integer;
    if (id < 0 || id >= static_cast<int64_t>(Users.size())) return {};
    return Keep(Users[static_cast<size_t>(id)].toString(), evaluation);
}

constexpr std::array<QStringView, 10> DatabaseRoles = {
    u"public",           u"db_owner",          u"db_accessadmin",
    u"db_securityadmin", u"db_ddladmin",       u"db_datareader",
    u"db_datawriter",    u"db_denydatareader", u"db_backupoperator",
    u"db_denydatawriter"};
constexpr std::array<QStringView, 10> ServerRoles = {
    u"public",       u"sysadmin",  u"serveradmin", u"securityadmin", u"setupadmin",
    u"processadmin", u"diskadmin", u"dbcreator",   u"bulkadmin",     u"##MS_ServerStateReader##"};

// The first two of each table are the owner's; of what is no role there is nothing to tell.
SqlValue Membership(std::span<const QStringView> roles, const SqlValue& role) {
    const QString name = FromUtf8(role.text);
    for (size_t i = 0; i < roles.size(); ++i) {
        if (roles[i].compare(name, Qt::CaseInsensitive) == 0) return SqlValue::Integer(i < 2);
    }
    return {};
}

SqlValue IsMember(const BoundCall&, const SqlValue* a, const Evaluation&) {
    return Membership(DatabaseRoles, a[0]);
}

SqlValue IsServerRoleMember(const BoundCall&, const SqlValue* a, const Evaluation&) {
    return Membership(ServerRoles, a[0]);
}

// The owner may do everything with what there is.
SqlValue HasPermission(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    if (a[2].IsNull()) return {};
    const QString kind = Lower(a[1]), name = FromUtf8(a[0].text);
    const Environment& environment = *evaluation.environment;
    if (a[0].IsNull()) return SqlValue::Integer(1);
    if (kind == u"object") {
        return environment.ObjectId(name, QString()).IsNull() ? SqlValue() : SqlValue::Integer(1);
    }
    if (kind == u"database") {
        return environment.DatabaseIdOf(name).IsNull() ? SqlValue() : SqlValue::Integer(1);
    }
    if (kind == u"schema") {
        const bool found = environment.Catalog().FindSchema(name).has_value();
        return found ? SqlValue::Integer(1) : SqlValue();
    }
    return {};
}

// Counted from the right: 1 is the object, 2 the schema, 3 the database, 4 the server.
SqlValue ParseName(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<tsql::ObjectName> name = tsql::ParseLooseName(FromUtf8(a[0].text));
    if (!name || a[1].integer < 1 || a[1].integer > 4) return {};
    const std::array<QString, 4> parts = {name->name, name->schema, name->database, name->server};
    const QString& part = parts[static_cast<size_t>(a[1].integer - 1)];
    return part.isEmpty() ? SqlValue() : Keep(part, evaluation);
}

template <Compute Function, TypeKind Kind, bool TakesNull = false>
BoundPtr BindNames(Arguments arguments) {
    for (BoundPtr& argument : arguments) {
        argument =
            ExpressionBinder::Convert(std::move(argument), MakeType(TypeKind::NVarChar, 600));
    }
    const SqlType type = Kind == TypeKind::NVarChar ? SysnameType() : MakeType(Kind);
    return MakeNullableCall(Function, type, std::move(arguments), TakesNull);
}

BoundPtr BindUserName(Arguments arguments) {
    if (arguments.empty()) return MakeSystemValue(SystemValue::UserName);
    for (BoundPtr& argument : arguments) {
        argument = ExpressionBinder::Convert(std::move(argument), IntType());
    }
    return MakeNullableCall(UserName, SysnameType(), std::move(arguments));
}

BoundPtr BindParseName(Arguments arguments) {
    arguments[0] =
        ExpressionBinder::Convert(std::move(arguments[0]), MakeType(TypeKind::NVarChar, 600));
    arguments[1] = ExpressionBinder::Convert(std::move(arguments[1]), IntType());
    return MakeNullableCall(ParseName, SysnameType(), std::move(arguments));
}

SqlValue RowCountBig(const BoundCall&, const SqlValue*, const Evaluation& evaluation) {
    return evaluation.environment->Ask(SystemValue::RowCount);
}

BoundPtr BindRowCountBig(Arguments arguments) {
    return MakeCall(RowCountBig, MakeType(TypeKind::BigInt), std::move(arguments));
}

BoundPtr BindOne(Arguments) {
    return MakeAnswer(1, IntType());
}

BoundPtr BindFullText(Arguments) {
    return MakeAnswer(0, IntType());
}

}  // namespace

std::span<const FunctionEntry> ServerFunctions() {
    static constexpr std::array<FunctionEntry, 15> Table = {{
        {u"serverproperty", 1, 1, BindServerProperty},
        {u"databasepropertyex", 2, 2, BindDatabaseProperty},
        {u"fulltextserviceproperty", 1, 1, BindFullText},
        {u"has_dbaccess", 1, 1, BindNames<HasDatabaseAccess, TypeKind::Int>},
        {u"user_id", 0, 1, BindNames<UserId, TypeKind::Int>},
        {u"database_principal_id", 0, 1, BindNames<UserId, TypeKind::Int>},
        {u"user_name", 0, 1, BindUserName},
        {u"is_member", 1, 1, BindNames<IsMember, TypeKind::Int>},
        {u"is_rolemember", 1, 1, BindNames<IsMember, TypeKind::Int>},
        {u"is_srvrolemember", 1, 1, BindNames<IsServerRoleMember, TypeKind::Int>},
        {u"has_perms_by_name", 3, 5, BindNames<HasPermission, TypeKind::Int, true>},
        {u"parsename", 2, 2, BindParseName},
        {u"rowcount_big", 0, 0, BindRowCountBig},
        {u"getansinull", 0, 1, BindOne},
        {u"suser_id", 0, 0, BindOne},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
