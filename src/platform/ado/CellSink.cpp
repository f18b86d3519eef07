#include "platform/ado/CellSink.h"

#include "base/RuntimeError.h"

namespace quarv::ado {

void CellSink::Append(const Value& value) {
    switch (value.kind()) {
        case Value::Kind::Empty:
            return AppendEmpty();
        case Value::Kind::Null:
            return AppendNull();
        case Value::Kind::Boolean:
            return AppendBoolean(value.ToBoolean());
        case Value::Kind::Integer:
            return AppendInteger(value.ToInteger());
        case Value::Kind::Single:
            return AppendSingle(static_cast<float>(value.ToDouble()));
        case Value::Kind::Floating:
            return AppendFloating(value.ToDouble());
        case Value::Kind::Decimal:
            return AppendDecimal(value.AsDecimal());
        case Value::Kind::Text:
            return AppendText(value.Text());
        case Value::Kind::DateTime:
            return AppendDateTime(value.AsDateTime());
        case Value::Kind::Bytes:
            return AppendBytes(value.Bytes());
        case Value::Kind::Object:
            break;
    }
    throw RuntimeError(RuntimeError::TypeMismatch);
}

}  // namespace quarv::ado
