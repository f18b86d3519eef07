#include "platform/registry/HiveKey.h"

namespace quarv::registry {

const HiveKey* HiveKey::Find(const QStringList& path) const {
    const HiveKey* key = this;
    for (const QString& step : path) {
        const std::unique_ptr<HiveKey>* child = key->children.Find(step);
        if (child == nullptr) return nullptr;
        key = child->get();
    }
    return key;
}

HiveKey* HiveKey::Find(const QStringList& path) {
    return const_cast<HiveKey*>(std::as_const(*this).Find(path));
}

HiveKey& HiveKey::Ensure(const QStringList& path) {
    HiveKey* key = this;
    for (const QString& step : path) {
        key = &key->EnsureChild(step);
        if (key->mark == Mark::Deleted) key->mark = Mark::Anew;
    }
    return *key;
}

HiveKey& HiveKey::EnsureChild(const QString& childName) {
    if (std::unique_ptr<HiveKey>* child = children.Find(childName)) return **child;
    auto child = std::make_unique<HiveKey>();
    child->name = childName;
    return *children.Add(childName, std::move(child));
}

void HiveKey::SetValue(HiveValue value) {
    if (HiveValue* old = values.Find(value.name)) {
        value.name = old->name;
        *old = std::move(value);
        return;
    }
    const QString valueName = value.name;
    values.Add(valueName, std::move(value));
}

}  // namespace quarv::registry
