// HiveKey: one key of a hive in memory with its values and the keys below it; the root of a hive is
// a key without a name. It knows nothing of files, handles and rights.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <memory>

#include "platform/registry/NamedItems.h"

namespace quarv::registry {

struct HiveValue {
    QString name;  // empty for the key's default value
    quint32 type = 0;
    QByteArray data;       // exactly the bytes that were set
    bool deleted = false;  // in an overlay: hides the value of that name below it

    bool operator==(const HiveValue&) const = default;
};

struct HiveKey {
    // What a key of an overlay says about the key of the same path below it.
    enum class Mark : quint8 {
        None,     // both are seen, this one first
        Deleted,  // neither is seen
        Anew,     // only this one is seen
    };

    QString name;
    Mark mark = Mark::None;  // always None outside an overlay
    NamedItems<HiveValue> values;
    NamedItems<std::unique_ptr<HiveKey>> children;

    // Null where the path leads nowhere; the key itself for the empty path. Owned by this key.
    const HiveKey* Find(const QStringList& path) const;
    HiveKey* Find(const QStringList& path);
    // Makes what is missing on the way. A key marked deleted comes back anew.
    HiveKey& Ensure(const QStringList& path);
    HiveKey& EnsureChild(const QString& childName);
    // Replaces the value of that name, keeping the name's letter case and position.
    void SetValue(HiveValue value);

    bool IsBare() const { return values.Count() == 0 && children.Count() == 0; }
};

}  // namespace quarv::registry
