#include "platform/ado/Recordset.h"

namespace quarv::ado {

void Recordset::WriteRow(CellSink& sink) const {
    const ado::Fields& fields = Fields();
    const int count = fields.Count();
    for (int i = 0; i < count; ++i) sink.Append(fields[i].Value());
}

}  // namespace quarv::ado
