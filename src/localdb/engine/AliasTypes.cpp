#include "localdb/engine/AliasTypes.h"

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

DeclaredType BindDeclaredType(BindContext& context, const tsql::TypeName& name, int ordinal) {
    DeclaredType declared;
    const bool sys = name.schema.compare(u"sys", Qt::CaseInsensitive) == 0;
    const bool system = (name.schema.isEmpty() || sys) && FindTypeKind(name.name).has_value();
    const std::optional<AliasType> alias =
        system || sys ? std::nullopt : context.CurrentMetadata().FindType(name.schema, name.name);
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
    declared.isSysname = false;
    return declared;
}

}  // namespace quarv::localdb::engine
