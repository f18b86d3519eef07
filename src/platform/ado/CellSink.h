// CellSink: takes the values of a row one behind the other, without an object for any of them. A
// record set writes its rows into one; what it does with them is the implementation's business.
#pragma once

#include <QByteArrayView>
#include <QStringView>

#include "base/Value.h"

namespace quarv::ado {

class CellSink {
  public:
    virtual ~CellSink() = default;

    // Views hold only during the call.
    virtual void AppendEmpty() = 0;
    virtual void AppendNull() = 0;
    virtual void AppendBoolean(bool value) = 0;
    virtual void AppendInteger(qint64 value) = 0;
    virtual void AppendSingle(float value) = 0;
    virtual void AppendFloating(double value) = 0;
    virtual void AppendDecimal(const Decimal& value) = 0;
    virtual void AppendText(QStringView value) = 0;
    virtual void AppendDateTime(const DateTime& value) = 0;
    virtual void AppendBytes(QByteArrayView value) = 0;

    // One of the above by the value's kind. Raises TypeMismatch for an object, which appends
    // nothing.
    void Append(const Value& value);
};

}  // namespace quarv::ado
