// SetOption: SET option value, for the options of a session. Which of them have an effect is the
// engine's affair.
#pragma once

#include <QStringList>

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct SetOption : Statement {
    SetOption() : Statement(StatementType::SetOption) {}
    QStringList names;  // lower case; several where commas join them ("ansi_nulls, ansi_padding")
    QString value;  // lower case: "on", "off", a number or words; empty where there is `operand`
    ExpressionPtr operand;  // a variable, or the bytes of CONTEXT_INFO
    ObjectName table;       // of IDENTITY_INSERT
};

// SET of an option or of a variable.
StatementPtr ParseSet(TokenReader& reader);

}  // namespace quarv::localdb::tsql
