#include "localdb/tsql/CreateView.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

StatementPtr ParseCreateView(TokenReader& reader) {
    const Token first = reader.Take();
    if (!reader.IsFirst(first)) {
        throw SyntaxError(SyntaxError::MustBeFirst, {QStringLiteral("CREATE VIEW")}, first.line,
                          first.column);
    }
    reader.Take();
    auto view = std::make_unique<CreateView>();
    view->name = ParseObjectName(reader);
    if (reader.TrySign(u"(")) {
        do {
            view->columns.push_back(reader.ExpectName());
        } while (reader.TrySign(u","));
        reader.ExpectSign(u")");
    }
    if (reader.AtWord(u"with")) reader.Unsupported(QStringLiteral("CREATE VIEW ... WITH"));
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
    view->source = reader.Batch();
    return view;
}

}  // namespace quarv::localdb::tsql
