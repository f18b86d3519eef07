// CreateView: CREATE [OR ALTER] VIEW and ALTER VIEW name [(columns)] AS query [WITH CHECK OPTION].
// Keeps its source letter for letter.
#pragma once

#include "localdb/tsql/ModuleHead.h"
#include "localdb/tsql/Query.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

struct CreateView : Statement {
    CreateView() : Statement(StatementType::CreateView) {}
    ModuleVerb verb = ModuleVerb::Create;
    ObjectName name;
    std::vector<QString> columns;  // empty: the query's own names
    std::unique_ptr<Query> query;
    bool checkOption = false;
    QString source;  // the whole batch, as the catalogue keeps it
};

StatementPtr ParseCreateView(TokenReader& reader);

}  // namespace quarv::localdb::tsql
