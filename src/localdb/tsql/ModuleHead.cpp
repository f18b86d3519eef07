#include "localdb/tsql/ModuleHead.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

QString ModuleHead::Source(const QString& batch) const {
    switch (verb) {
        case ModuleVerb::Alter:
            return batch.left(begin) + QStringLiteral("CREATE") + batch.mid(end);
        case ModuleVerb::CreateOrAlter:
            return batch.left(begin) + u' ' + batch.mid(end);
        default:
            return batch;
    }
}

ModuleHead ParseModuleHead(TokenReader& reader, const QString& statement) {
    const Token first = reader.Take();
    if (!reader.IsFirst(first)) {
        throw SyntaxError(SyntaxError::MustBeFirst, {statement}, first.line, first.column);
    }
    ModuleHead head;
    if (first.IsWord(u"alter")) {
        head.verb = ModuleVerb::Alter;
        head.begin = first.offset;
        head.end = first.offset + first.length;
    } else if (reader.AtWord(u"or")) {
        head.verb = ModuleVerb::CreateOrAlter;
        head.begin = reader.Take().offset;
        const Token alter = reader.Take();
        head.end = alter.offset + alter.length;
    }
    reader.Take();
    return head;
}

}  // namespace quarv::localdb::tsql
