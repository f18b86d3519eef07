// ObjectName: a name of up to four parts as written ("server.database.schema.name"); parts that are
// not there are empty, inner ones included ("db..name").
#pragma once

#include <QString>
#include <optional>

namespace quarv::localdb::tsql {

class TokenReader;

struct ObjectName {
    QString server;
    QString database;
    QString schema;
    QString name;
    int line = 0;
    bool isVariable = false;  // a table variable: only `name`, with its "@"

    // As written, without quotes: "db..name".
    QString ToText() const;
};

// The name as a delimited identifier: "[a]]b]".
QString Bracketed(const QString& name);
// Reads one name. Leading dots are read where `leadingDots` says so ("..sp_tables").
ObjectName ParseObjectName(TokenReader& reader, bool leadingDots = false);
// Reads a name that came alone, as a procedure call over the wire brings it; a version suffix ";1"
// is cut. Raises SyntaxError where the text is anything else.
ObjectName ParseProcedureName(const QString& text);

// Reads a name as OBJECT_ID and the help procedures take it: parts between dots, quoted or plain,
// blanks and all. Nothing where it has more than four parts or an unclosed quote.
std::optional<ObjectName> ParseLooseName(const QString& text);

}  // namespace quarv::localdb::tsql
