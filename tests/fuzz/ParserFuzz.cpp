// A batch of any text: a tree or a syntax error, nothing else.
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/SyntaxError.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace quarv::localdb::tsql;
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    try {
        ParseBatch(text);
    } catch (const SyntaxError&) {
    }
    return 0;
}
