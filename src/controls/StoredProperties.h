// StoredProperties: how the owner-drawn controls read what a property bag holds.
#pragma once

#include <QtGlobal>
#include <limits>

#include "base/RuntimeError.h"
#include "platform/drawing/SystemColors.h"
#include "platform/forms/PropertyBag.h"

namespace quarv {

inline constexpr quint32 DefaultBackColor = drawing::Stored(drawing::SystemColor::ButtonFace);

// `defaultValue` where none is stored. Raises Overflow for what is no signed 32-bit number.
inline qint32 ReadInteger(const forms::PropertyBag& bag, const QString& name, qint32 defaultValue) {
    const qint64 stored = bag.ReadProperty(name, Value(defaultValue)).ToInteger();
    if (stored < std::numeric_limits<qint32>::min() || stored > std::numeric_limits<qint32>::max())
        throw RuntimeError(RuntimeError::Overflow);
    return static_cast<qint32>(stored);
}

// "BackColor", the button face where none is stored. 32 bits with or without a sign; raises
// Overflow beyond.
inline quint32 ReadBackColor(const forms::PropertyBag& bag) {
    const qint64 stored =
        bag.ReadProperty(QStringLiteral("BackColor"), Value(DefaultBackColor)).ToInteger();
    if (stored < std::numeric_limits<qint32>::min() || stored > std::numeric_limits<quint32>::max())
        throw RuntimeError(RuntimeError::Overflow);
    return static_cast<quint32>(stored);
}

inline void WriteBackColor(forms::PropertyBag& bag, quint32 stored) {
    bag.WriteProperty(QStringLiteral("BackColor"), Value(stored), Value(DefaultBackColor));
}

}  // namespace quarv
