#include "localdb/tsql/CreateProcedure.h"

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/StatementParser.h"

namespace quarv::localdb::tsql {

namespace {

ParameterDefinition ParseParameter(TokenReader& reader) {
    ParameterDefinition parameter;
    parameter.line = reader.Line();
    parameter.name = reader.ExpectVariable();
    reader.TryWord(u"as");
    parameter.type = ParseTypeName(reader);
    if (reader.AtWord(u"varying")) reader.Unsupported(QStringLiteral("VARYING"));
    if (reader.AtWord(u"null")) reader.Take();
    if (reader.TrySign(u"=")) {
        const Token& token = reader.Peek();
        if (token.IsName()) {
            // A bare word as a default is a string ("Parameters", CREATE PROCEDURE).
            const int line = token.line;
            auto text = std::make_unique<Literal>(LiteralKind::String, reader.Take().text);
            text->line = line;
            parameter.defaultValue = std::move(text);
        } else {
            parameter.defaultValue = ParseConstant(reader);
        }
    }
    parameter.output = reader.TryWord(u"output") || reader.TryWord(u"out");
    if (reader.AtWord(u"readonly")) reader.Unsupported(QStringLiteral("READONLY"));
    return parameter;
}

void ParseParameters(TokenReader& reader, std::vector<ParameterDefinition>& parameters) {
    do {
        parameters.push_back(ParseParameter(reader));
    } while (reader.TrySign(u","));
}

}  // namespace

StatementPtr ParseCreateProcedure(TokenReader& reader) {
    const ModuleHead head = ParseModuleHead(reader, QStringLiteral("CREATE/ALTER PROCEDURE"));
    auto procedure = std::make_unique<CreateProcedure>();
    procedure->verb = head.verb;
    procedure->name = ParseObjectName(reader);
    if (reader.AtSign(u";")) reader.Unsupported(QStringLiteral("procedure number"));
    if (reader.TrySign(u"(")) {
        ParseParameters(reader, procedure->parameters);
        reader.ExpectSign(u")");
    } else if (reader.Peek().kind == TokenKind::Variable) {
        ParseParameters(reader, procedure->parameters);
    }
    for (const QStringView word : {u"with", u"for"}) {
        if (reader.AtWord(word)) {
            reader.Unsupported(QStringLiteral("CREATE PROCEDURE ... ") + word.toString().toUpper());
        }
    }
    reader.ExpectWord(u"as");
    ParseStatements(reader, procedure->body);
    if (procedure->body.empty() || !reader.AtEnd()) reader.Fail();
    procedure->source = head.Source(reader.Batch());
    return procedure;
}

std::vector<ParameterDefinition> ParseParameterList(const QString& text) {
    TokenReader reader(text);
    std::vector<ParameterDefinition> parameters;
    if (!reader.AtEnd()) ParseParameters(reader, parameters);
    if (!reader.AtEnd()) reader.Fail();
    return parameters;
}

}  // namespace quarv::localdb::tsql
