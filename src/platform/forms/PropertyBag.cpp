#include "platform/forms/PropertyBag.h"

namespace quarv::forms {

namespace {

bool Same(const Value& a, const Value& b) {
    if (a.IsNull() || b.IsNull()) return a.IsNull() && b.IsNull();
    if (a.IsEmpty() || b.IsEmpty()) return a.IsEmpty() && b.IsEmpty();
    return Value::Equal(a, b);
}

}  // namespace

Value PropertyBag::ReadProperty(const QString& name, const Value& defaultValue) const {
    return values_.value(name.toCaseFolded(), defaultValue);
}

void PropertyBag::WriteProperty(const QString& name, const Value& value,
                                const Value& defaultValue) {
    if (Same(value, defaultValue))
        values_.remove(name.toCaseFolded());
    else
        values_.insert(name.toCaseFolded(), value);
}

bool PropertyBag::Contains(const QString& name) const {
    return values_.contains(name.toCaseFolded());
}

}  // namespace quarv::forms
