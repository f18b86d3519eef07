// TypeName: a data type as written, not yet known to exist: "decimal(10, 2)", "nvarchar(max)".
#pragma once

#include <QString>
#include <vector>

namespace quarv::localdb::tsql {

class TokenReader;

struct TypeName {
    QString schema;
    QString name;
    std::vector<int> arguments;  // length, or precision and scale
    bool max = false;            // "(max)" stood for the length
    int line = 0;
};

TypeName ParseTypeName(TokenReader& reader);

}  // namespace quarv::localdb::tsql
