#include "localdb/engine/ObjectProperties.h"

#include <algorithm>
#include <array>

#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

using Answer = std::optional<int64_t>;

struct TypeProperty {
    QStringView name;
    std::array<QStringView, 5> types;  // the objects that have it
};

constexpr std::array<TypeProperty, 17> TypeProperties = {{
    {u"istable", {u"U", u"S"}},
    {u"isusertable", {u"U"}},
    {u"issystemtable", {u"S"}},
    {u"isview", {u"V"}},
    {u"isprocedure", {u"P"}},
    {u"isprimarykey", {u"PK"}},
    {u"isuniquecnst", {u"UQ"}},
    {u"isforeignkey", {u"F"}},
    {u"ischeckcnst", {u"C"}},
    {u"isdefaultcnst", {u"D"}},
    {u"isconstraint", {u"PK", u"UQ", u"F", u"C", u"D"}},
    {u"isindexable", {u"U"}},
    {u"isquotedidenton", {u"U", u"V", u"P"}},
    {u"isansinullson", {u"U", u"V", u"P"}},
    {u"execisquotedidenton", {u"V", u"P"}},
    {u"execisansinullson", {u"V", u"P"}},
    {u"ownerid", {}},
}};

// What no object of this server is or has.
constexpr std::array<QStringView, 21> NeverTrue = {u"isdefault",
                                                   u"isrule",
                                                   u"isscalarfunction",
                                                   u"istablefunction",
                                                   u"isinlinefunction",
                                                   u"istrigger",
                                                   u"isextendedproc",
                                                   u"isreplproc",
                                                   u"ismsshipped",
                                                   u"isencrypted",
                                                   u"isqueue",
                                                   u"tablehastextimage",
                                                   u"tablehasrowguidcol",
                                                   u"tablehastimestamp",
                                                   u"tableisfake",
                                                   u"tableispinned",
                                                   u"isexecuted",
                                                   u"execisstartup",
                                                   u"tablehasdeletetrigger",
                                                   u"tablehasinserttrigger",
                                                   u"tablehasupdatetrigger"};

bool HasIndex(const TableInfo& table, bool clustered) {
    return std::any_of(table.indexes.begin(), table.indexes.end(),
                       [clustered](const IndexInfo& i) { return i.clustered == clustered; });
}

Answer TableProperty(Metadata& metadata, const TableInfo& table, const QString& property) {
    const int64_t id = table.object.id;
    if (property == u"tablehasprimarykey") return metadata.HasChild(id, QStringLiteral("PK"));
    if (property == u"tablehasuniquecnst") return metadata.HasChild(id, QStringLiteral("UQ"));
    if (property == u"tablehasforeignkey") return metadata.HasChild(id, QStringLiteral("F"));
    if (property == u"tablehascheckcnst") return metadata.HasChild(id, QStringLiteral("C"));
    if (property == u"tablehasdefaultcnst") return metadata.HasChild(id, QStringLiteral("D"));
    if (property == u"tablehasidentity") return table.identity.has_value();
    if (property == u"tablehasclustindex") return HasIndex(table, true);
    if (property == u"tablehasnonclustindex") return HasIndex(table, false);
    if (property == u"tablehasindex" || property == u"isindexed") return !table.indexes.empty();
    return std::nullopt;
}

// Characters of text, digits of numbers, as the function counts them.
int64_t PrecisionProperty(const SqlType& type) {
    return ClassOf(type) == TypeClass::Text ? type.length : PrecisionOf(type);
}

Answer TypedProperty(const SqlType& type, const QString& property) {
    const TypeClass cls = ClassOf(type);
    const bool text = cls == TypeClass::Text;
    if (property == u"precision") return PrecisionProperty(type);
    if (property == u"charmaxlen") return text ? Answer(type.length) : std::nullopt;
    if (property == u"scale") return text ? std::nullopt : Answer(ScaleOf(type));
    return std::nullopt;
}

Answer ParameterProperty(Metadata& metadata, int64_t objectId, const QString& name,
                         const QString& property) {
    const std::vector<ParameterInfo> parameters = metadata.LoadParameters(objectId);
    const auto found =
        std::find_if(parameters.begin(), parameters.end(),
                     [&name](const ParameterInfo& p) { return SameName(p.name, name); });
    if (found == parameters.end()) return std::nullopt;
    if (property == u"isoutparam") return found->output;
    if (property == u"columnid" || property == u"ordinal") return found - parameters.begin() + 1;
    if (property == u"allowsnull") return 1;
    return TypedProperty(found->type, property);
}

}  // namespace

Answer ObjectProperty(Metadata& metadata, int64_t objectId, const QString& property) {
    const std::optional<ObjectInfo> object = metadata.Find(objectId);
    if (!object) return std::nullopt;
    if (property == u"ownerid") return 1;
    if (property == u"schemaid") return object->schemaId;
    for (const TypeProperty& entry : TypeProperties) {
        if (entry.name == property) {
            const auto& types = entry.types;
            return std::find(types.begin(), types.end(), object->type) != types.end();
        }
    }
    if (std::find(NeverTrue.begin(), NeverTrue.end(), property) != NeverTrue.end()) return 0;
    if (object->type != u"U") return std::nullopt;
    return TableProperty(metadata, metadata.LoadTable(*object), property);
}

Answer ColumnProperty(Metadata& metadata, int64_t objectId, const QString& column,
                      const QString& property) {
    const std::optional<ObjectInfo> object = metadata.Find(objectId);
    if (!object) return std::nullopt;
    if (column.startsWith(u'@')) return ParameterProperty(metadata, objectId, column, property);
    const TableInfo table = metadata.LoadTable(*object);
    const ColumnInfo* found = table.FindColumn(column);
    if (!found) return std::nullopt;
    if (property == u"allowsnull") return found->nullable;
    if (property == u"columnid" || property == u"ordinal") return found->id;
    if (property == u"isidentity") return found->identity;
    if (property == u"iscomputed") return found->IsComputed();
    if (property == u"isrowguidcol") return found->rowGuid;
    if (property == u"isindexable") return found->type.length != SqlType::Max;
    if (property == u"usesansitrim") {
        return ClassOf(found->type) == TypeClass::Text ? Answer(1) : std::nullopt;
    }
    for (const QStringView never :
         {u"iscolumnset", u"isidnotforrepl", u"issparse", u"ishidden", u"isfulltextindexed",
          u"isxmlindexable", u"generatedalwaystype", u"iscursortype"}) {
        if (property == never) return 0;
    }
    return TypedProperty(found->type, property);
}

Answer IndexProperty(Metadata& metadata, int64_t objectId, const QString& index,
                     const QString& property) {
    const std::optional<ObjectInfo> object = metadata.Find(objectId);
    if (!object) return std::nullopt;
    const TableInfo table = metadata.LoadTable(*object);
    const IndexInfo* found = table.FindIndex(index);
    if (!found) return std::nullopt;
    if (property == u"indexid") return found->id;
    if (property == u"isunique") return found->unique;
    if (property == u"isclustered") return found->clustered;
    for (const QStringView never :
         {u"indexfillfactor", u"ispadindex", u"isdisabled", u"ishypothetical", u"isstatistics",
          u"isautostatistics", u"isfulltextkey", u"isrowlockdisallowed", u"ispagelockdisallowed",
          u"iscolumnstore"}) {
        if (property == never) return 0;
    }
    return std::nullopt;
}

}  // namespace quarv::localdb::engine
