// Change: one change to a hive as data, so that it can be made in the hive itself or in the overlay
// that stands in for it.
#pragma once

#include "platform/registry/HiveKey.h"

namespace quarv::registry {

struct Change {
    enum class Kind : quint8 { CreateKey, SetValue, DeleteValue, DeleteKey };

    Kind kind;
    QStringList path;  // never empty for DeleteKey
    HiveValue value;   // SetValue: whole; DeleteValue: its name
};

// Makes the change in a plain hive; what is missing on the way of CreateKey and SetValue is made,
// what DeleteValue and DeleteKey do not find is no error. False where nothing had to change.
bool Apply(const Change& change, HiveKey& root);

}  // namespace quarv::registry
