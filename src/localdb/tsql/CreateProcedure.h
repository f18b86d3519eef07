// CreateProcedure: CREATE [OR ALTER] PROCEDURE and ALTER PROCEDURE with its parameters and its
// body. Keeps its source letter for letter: the whole batch, comments around it included.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/ModuleHead.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

struct ParameterDefinition {
    QString name;  // with its "@"
    TypeName type;
    ExpressionPtr defaultValue;  // a constant, or nothing
    bool output = false;
    int line = 0;
};

struct CreateProcedure : Statement {
    CreateProcedure() : Statement(StatementType::CreateProcedure) {}
    ModuleVerb verb = ModuleVerb::Create;
    ObjectName name;
    std::vector<ParameterDefinition> parameters;
    StatementList body;
    QString source;
};

StatementPtr ParseCreateProcedure(TokenReader& reader);
// A list of parameters such as sp_executesql takes, without parentheses. Raises SyntaxError.
std::vector<ParameterDefinition> ParseParameterList(const QString& text);

}  // namespace quarv::localdb::tsql
