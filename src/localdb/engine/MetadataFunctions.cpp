// The functions that ask the current database's catalogue for objects, columns, indexes, schemas
// and types.
#include <algorithm>
#include <array>

#include "localdb/engine/FunctionTools.h"
#include "localdb/engine/ObjectProperties.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

namespace {

SqlType LongName() {
    return MakeType(TypeKind::NVarChar, 600);
}

SqlValue Keep(const QString& text, const Evaluation& evaluation) {
    return SqlValue::Text(evaluation.arena->Keep(ToUtf8(text)));
}

SqlValue NumberOrNull(std::optional<int64_t> number) {
    return number ? SqlValue::Integer(*number) : SqlValue();
}

QString Lower(const SqlValue& value) {
    return FromUtf8(WithoutTrailingBlanks(value.text)).toLower();
}

// One letter an argument: "n" a name, "i" a number.
template <Compute Function, char... Kinds>
BoundPtr BindAsked(const SqlType& type, Arguments arguments) {
    constexpr std::array<char, sizeof...(Kinds)> kinds = {Kinds...};
    for (size_t i = 0; i < arguments.size(); ++i) {
        arguments[i] = ExpressionBinder::Convert(std::move(arguments[i]),
                                                 kinds[i] == 'n' ? LongName() : IntType());
    }
    return MakeNullableCall(Function, type, std::move(arguments));
}

template <Compute Function, char... Kinds>
BoundPtr BindNumber(Arguments arguments) {
    return BindAsked<Function, Kinds...>(IntType(), std::move(arguments));
}

template <Compute Function, char... Kinds>
BoundPtr BindName(Arguments arguments) {
    return BindAsked<Function, Kinds...>(SysnameType(), std::move(arguments));
}

SqlValue SchemaName(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    Metadata metadata = evaluation.environment->Catalog();
    const int64_t id = call.parts.empty() ? Metadata::DboSchema : a[0].integer;
    const QString name = metadata.SchemaName(id);
    return name.isNull() ? SqlValue() : Keep(name, evaluation);
}

SqlValue SchemaId(const BoundCall& call, const SqlValue* a, const Evaluation& evaluation) {
    if (call.parts.empty()) return SqlValue::Integer(Metadata::DboSchema);
    Metadata metadata = evaluation.environment->Catalog();
    const QString name = FromUtf8(a[0].text);
    if (name.isEmpty()) return {};
    const std::optional<int> id = metadata.FindSchema(name);
    return id ? SqlValue::Integer(*id) : SqlValue();
}

constexpr int SysnameNumber = 256;

SqlValue TypeName(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    if (a[0].integer == SysnameNumber) return Keep(QStringLiteral("sysname"), evaluation);
    for (int kind = 0; kind <= static_cast<int>(TypeKind::Xml); ++kind) {
        const TypeFacts& facts = FactsOf(static_cast<TypeKind>(kind));
        if (facts.number == a[0].integer) return Keep(QString::fromUtf16(facts.name), evaluation);
    }
    if (a[0].integer < SysnameNumber) return {};
    Metadata metadata = evaluation.environment->Catalog();
    const std::optional<AliasType> alias = metadata.FindType(static_cast<int>(a[0].integer));
    return alias ? Keep(alias->name, evaluation) : SqlValue();
}

// Without a schema a system type goes before dbo's.
SqlValue TypeId(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<tsql::ObjectName> name =
        tsql::ParseLooseName(FromUtf8(WithoutTrailingBlanks(a[0].text)));
    if (!name || !name->database.isEmpty()) return {};
    if (name->schema.isEmpty() || SameName(name->schema, QStringLiteral("sys"))) {
        if (SameName(name->name, QStringLiteral("sysname"))) {
            return SqlValue::Integer(SysnameNumber);
        }
        const std::optional<TypeKind> kind = FindTypeKind(name->name);
        if (kind) return SqlValue::Integer(FactsOf(*kind).number);
    }
    Metadata metadata = evaluation.environment->Catalog();
    const std::optional<AliasType> alias = metadata.FindType(name->schema, name->name);
    return alias ? SqlValue::Integer(alias->userType) : SqlValue();
}

// The table of an id; nothing where there is none.
std::optional<TableInfo> TableOf(int64_t id, const Evaluation& evaluation) {
    Metadata metadata = evaluation.environment->Catalog();
    const std::optional<ObjectInfo> object = metadata.Find(id);
    return object ? std::optional(metadata.LoadTable(*object)) : std::nullopt;
}

std::optional<TableInfo> TableNamed(const SqlValue& name, const Evaluation& evaluation) {
    const SqlValue id = evaluation.environment->ObjectId(FromUtf8(name.text), QString());
    return id.IsNull() ? std::nullopt : TableOf(id.integer, evaluation);
}

SqlValue ColumnName(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<TableInfo> table = TableOf(a[0].integer, evaluation);
    if (!table || a[1].integer < 1) return {};
    const ColumnInfo* column = table->FindColumn(static_cast<int>(a[1].integer));
    return column ? Keep(column->name, evaluation) : SqlValue();
}

SqlValue ColumnLength(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<TableInfo> table = TableNamed(a[0], evaluation);
    const ColumnInfo* column = table ? table->FindColumn(FromUtf8(a[1].text)) : nullptr;
    return column ? SqlValue::Integer(ByteLength(column->type)) : SqlValue();
}

BoundPtr BindColumnLength(Arguments arguments) {
    return BindAsked<ColumnLength, 'n', 'n'>(MakeType(TypeKind::SmallInt), std::move(arguments));
}

SqlValue ObjectSchemaName(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<ObjectInfo> object = evaluation.environment->Catalog().Find(a[0].integer);
    return object ? Keep(object->schema, evaluation) : SqlValue();
}

SqlValue ObjectDefinition(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<ObjectInfo> object = evaluation.environment->Catalog().Find(a[0].integer);
    const bool has = object && !object->definition.isEmpty();
    return has ? Keep(object->definition, evaluation) : SqlValue();
}

BoundPtr BindObjectDefinition(Arguments arguments) {
    return BindAsked<ObjectDefinition, 'i'>(MakeType(TypeKind::NVarChar, SqlType::Max),
                                            std::move(arguments));
}

SqlValue AskObject(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    Metadata metadata = evaluation.environment->Catalog();
    return NumberOrNull(ObjectProperty(metadata, a[0].integer, Lower(a[1])));
}

SqlValue BaseTypeOf(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<ObjectInfo> object = evaluation.environment->Catalog().Find(a[0].integer);
    return object ? Keep(object->type.leftJustified(2), evaluation) : SqlValue();
}

// The one property that is no number has to be written as a constant: a result has one type.
BoundPtr BindObjectPropertyEx(Arguments arguments) {
    if (ConstantWord(*arguments[1]) == u"basetype") {
        return BindAsked<BaseTypeOf, 'i', 'n'>(MakeType(TypeKind::Char, 2), std::move(arguments));
    }
    return BindNumber<AskObject, 'i', 'n'>(std::move(arguments));
}

SqlValue AskColumn(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    Metadata metadata = evaluation.environment->Catalog();
    return NumberOrNull(ColumnProperty(metadata, a[0].integer, FromUtf8(a[1].text), Lower(a[2])));
}

SqlValue AskIndex(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    Metadata metadata = evaluation.environment->Catalog();
    return NumberOrNull(IndexProperty(metadata, a[0].integer, FromUtf8(a[1].text), Lower(a[2])));
}

const IndexInfo::Key* KeyOf(const TableInfo& table, const SqlValue& index, const SqlValue& key) {
    for (const IndexInfo& candidate : table.indexes) {
        if (candidate.id != index.integer) continue;
        const bool has =
            key.integer >= 1 && key.integer <= static_cast<int64_t>(candidate.keys.size());
        return has ? &candidate.keys[static_cast<size_t>(key.integer - 1)] : nullptr;
    }
    return nullptr;
}

SqlValue AskIndexKey(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<TableInfo> table = TableOf(a[0].integer, evaluation);
    const IndexInfo::Key* key = table ? KeyOf(*table, a[1], a[2]) : nullptr;
    const QString property = Lower(a[3]);
    if (key && property == u"columnid") return SqlValue::Integer(key->columnId);
    if (key && property == u"isdescending") return SqlValue::Integer(key->descending);
    return {};
}

SqlValue IndexColumn(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<TableInfo> table = TableNamed(a[0], evaluation);
    const IndexInfo::Key* key = table ? KeyOf(*table, a[1], a[2]) : nullptr;
    return key ? Keep(table->FindColumn(key->columnId)->name, evaluation) : SqlValue();
}

enum class IdentityPart { Current, Seed, Increment };

template <IdentityPart Part>
SqlValue AskIdentity(const BoundCall&, const SqlValue* a, const Evaluation& evaluation) {
    const std::optional<TableInfo> table = TableNamed(a[0], evaluation);
    if (!table || !table->identity) return {};
    const IdentityInfo& identity = *table->identity;
    if (Part == IdentityPart::Seed) return SqlValue::Wide(identity.seed);
    if (Part == IdentityPart::Increment) return SqlValue::Wide(identity.increment);
    return SqlValue::Wide(identity.last.value_or(identity.seed));
}

template <IdentityPart Part>
BoundPtr BindIdentity(Arguments arguments) {
    return BindAsked<AskIdentity<Part>, 'n'>(MakeType(TypeKind::Numeric, 0, 38, 0),
                                             std::move(arguments));
}

}  // namespace

std::span<const FunctionEntry> MetadataFunctions() {
    static constexpr std::array<FunctionEntry, 17> Table = {{
        {u"schema_name", 0, 1, BindName<SchemaName, 'i'>},
        {u"schema_id", 0, 1, BindNumber<SchemaId, 'n'>},
        {u"type_name", 1, 1, BindName<TypeName, 'i'>},
        {u"type_id", 1, 1, BindNumber<TypeId, 'n'>},
        {u"col_name", 2, 2, BindName<ColumnName, 'i', 'i'>},
        {u"col_length", 2, 2, BindColumnLength},
        {u"object_schema_name", 1, 1, BindName<ObjectSchemaName, 'i'>},
        {u"object_definition", 1, 1, BindObjectDefinition},
        {u"objectproperty", 2, 2, BindNumber<AskObject, 'i', 'n'>},
        {u"objectpropertyex", 2, 2, BindObjectPropertyEx},
        {u"columnproperty", 3, 3, BindNumber<AskColumn, 'i', 'n', 'n'>},
        {u"indexproperty", 3, 3, BindNumber<AskIndex, 'i', 'n', 'n'>},
        {u"indexkey_property", 4, 4, BindNumber<AskIndexKey, 'i', 'i', 'i', 'n'>},
        {u"index_col", 3, 3, BindName<IndexColumn, 'n', 'i', 'i'>},
        {u"ident_current", 1, 1, BindIdentity<IdentityPart::Current>},
        {u"ident_seed", 1, 1, BindIdentity<IdentityPart::Seed>},
        {u"ident_incr", 1, 1, BindIdentity<IdentityPart::Increment>},
    }};
    return Table;
}

}  // namespace quarv::localdb::engine
