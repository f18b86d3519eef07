#include "localdb/tsql/CreateDatabase.h"

#include <array>

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

StatementPtr ParseCreateDatabase(TokenReader& reader) {
    reader.Take();
    reader.Take();
    auto statement = std::make_unique<CreateDatabase>();
    statement->name = reader.ExpectName();
    constexpr std::array<QStringView, 6> Options = {u"on",   u"collate", u"containment",
                                                    u"with", u"for",     u"log"};
    for (const QStringView option : Options) {
        if (reader.AtWord(option)) {
            reader.Unsupported(QStringLiteral("CREATE DATABASE ... ") +
                               option.toString().toUpper());
        }
    }
    return statement;
}

}  // namespace quarv::localdb::tsql
