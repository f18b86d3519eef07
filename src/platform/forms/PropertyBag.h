// PropertyBag: the stored properties of a control on a form, by name. A form fills it when it is
// saved and hands it back when it loads. Values that equal their default are not stored.
#pragma once

#include <QHash>
#include <QString>

#include "base/Value.h"

namespace quarv::forms {

class PropertyBag {
  public:
    // The stored value, or `defaultValue` where none is stored. Names ignore letter case.
    Value ReadProperty(const QString& name, const Value& defaultValue = {}) const;
    // Stores `value`; where it equals `defaultValue` (or both are null, or both empty) nothing is
    // stored, and what was is taken out.
    void WriteProperty(const QString& name, const Value& value, const Value& defaultValue = {});

    bool Contains(const QString& name) const;
    int Count() const { return static_cast<int>(values_.size()); }

  private:
    QHash<QString, Value> values_;
};

}  // namespace quarv::forms
