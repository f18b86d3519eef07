#include "localdb/tsql/CreateView.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

StatementPtr ParseCreateView(TokenReader& reader) {
    const bool alters = reader.AtWord(u"alter");
    const ModuleHead head = ParseModuleHead(
        reader, alters ? QStringLiteral("ALTER VIEW") : QStringLiteral("CREATE VIEW"));
    auto view = std::make_unique<CreateView>();
    view->verb = head.verb;
    view->name = ParseObjectName(reader);
    if (reader.TrySign(u"(")) {
        do {
            view->columns.push_back(reader.ExpectName());
        } while (reader.TrySign(u","));
        reader.ExpectSign(u")");
    }
    if (reader.AtWord(u"with")) {
        reader.Unsupported(QStringLiteral("CREATE VIEW ... WITH ") + reader.Peek(1).text.toUpper());
    }
    reader.ExpectWord(u"as");
    view->query = ParseViewQuery(reader);
    view->checkOption = reader.TryWord(u"with");
    if (view->checkOption) {
        reader.ExpectWord(u"check");
        reader.ExpectWord(u"option");
    }
    while (reader.TrySign(u";")) {
    }
    if (!reader.AtEnd()) reader.Fail();
    view->source = head.Source(reader.Batch());
    return view;
}

}  // namespace quarv::localdb::tsql
