#include "localdb/engine/AliasTypes.h"

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/Frame.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

// An alias type never has such a name.
bool IsSystemType(const tsql::TypeName& name) {
    const bool sys = name.schema.compare(u"sys", Qt::CaseInsensitive) == 0;
    if (sys) return true;
    return name.schema.isEmpty() && (FindTypeKind(name.name) || IsRefusedType(name.name));
}

}  // namespace

DeclaredType BindDeclaredType(Metadata& metadata, const tsql::TypeName& name, int ordinal) {
    DeclaredType declared;
    const std::optional<AliasType> alias =
        IsSystemType(name) ? std::nullopt : metadata.FindType(name.schema, name.name);
    if (!alias) {
        declared.type = BindType(name, ordinal);
        declared.isSysname = name.name.compare(u"sysname", Qt::CaseInsensitive) == 0;
        declared.nullable = !declared.isSysname;
        return declared;
    }
    if (!name.arguments.empty() || name.max) {
        throw SqlError(2716, {QString::number(ordinal), alias->name}, name.line);
    }
    declared.type = alias->type;
    declared.userType = alias->userType;
    declared.name = alias->name;
    declared.nullable = alias->nullable;
    return declared;
}

DeclaredType BindDeclaredType(BindContext& context, const tsql::TypeName& name, int ordinal) {
    Metadata metadata = context.CurrentMetadata();
    return BindDeclaredType(metadata, name, ordinal);
}

SqlType BindVariableType(Frame& frame, const tsql::TypeName& name, int ordinal) {
    if (IsSystemType(name)) return BindType(name, ordinal);
    Metadata metadata = frame.Catalog();
    return BindDeclaredType(metadata, name, ordinal).type;
}

}  // namespace quarv::localdb::engine
