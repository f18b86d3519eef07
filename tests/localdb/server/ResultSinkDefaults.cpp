#include "localdb/engine/ResultSink.h"

namespace quarv::localdb::engine {

void ResultSink::ReturnValue(const QString&, const SqlType&, const Datum&) {}
void ResultSink::TransactionBegan(uint64_t) {}
void ResultSink::TransactionEnded(uint64_t, bool) {}

}  // namespace quarv::localdb::engine
