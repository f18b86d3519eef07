// AliasTypes: types as columns, variables and parameters are declared with them: the system's own
// or a user's name for one.
#pragma once

#include "localdb/engine/BindContext.h"
#include "localdb/tsql/TypeName.h"

namespace quarv::localdb::engine {

class Frame;

struct DeclaredType {
    SqlType type;
    int userType = 0;      // an alias type's number, else 0
    QString name;          // of the alias type, else empty
    bool nullable = true;  // where nothing else is said
    bool isSysname = false;
};

// `ordinal` names the place in messages. Alias types are those of the metadata's database, or of
// the context's current one. Raises as BindType does, and SqlError 2716 for an alias type with a
// length.
DeclaredType BindDeclaredType(Metadata& metadata, const tsql::TypeName& name, int ordinal);
DeclaredType BindDeclaredType(BindContext& context, const tsql::TypeName& name, int ordinal);

// The type of a variable, which may be null whatever its type says.
SqlType BindVariableType(Frame& frame, const tsql::TypeName& name, int ordinal);

}  // namespace quarv::localdb::engine
