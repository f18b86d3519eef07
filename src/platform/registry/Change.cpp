#include "platform/registry/Change.h"

namespace quarv::registry {

namespace {

bool SetValue(const Change& change, HiveKey& root) {
    if (const HiveKey* key = root.Find(change.path)) {
        const HiveValue* old = key->values.Find(change.value.name);
        if (old != nullptr && old->type == change.value.type && old->data == change.value.data)
            return false;
    }
    root.Ensure(change.path).SetValue(change.value);
    return true;
}

bool DeleteKey(const QStringList& path, HiveKey& root) {
    HiveKey* parent = root.Find(path.first(path.size() - 1));
    return parent != nullptr && parent->children.Remove(path.last());
}

}  // namespace

bool Apply(const Change& change, HiveKey& root) {
    switch (change.kind) {
        case Change::Kind::CreateKey:
            if (root.Find(change.path) != nullptr) return false;
            root.Ensure(change.path);
            return true;
        case Change::Kind::SetValue:
            return SetValue(change, root);
        case Change::Kind::DeleteValue: {
            HiveKey* key = root.Find(change.path);
            return key != nullptr && key->values.Remove(change.value.name);
        }
        case Change::Kind::DeleteKey:
            return DeleteKey(change.path, root);
    }
    return false;
}

}  // namespace quarv::registry
