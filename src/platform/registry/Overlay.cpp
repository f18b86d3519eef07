#include "platform/registry/Overlay.h"

namespace quarv::registry {

namespace {

void CopyInto(const HiveKey& from, HiveKey& to) {
    for (const HiveValue& value : from.values.All()) to.SetValue(value);
    for (const auto& child : from.children.All()) CopyInto(*child, to.EnsureChild(child->name));
}

void LayOver(const HiveKey& overlay, HiveKey& key) {
    for (const HiveValue& value : overlay.values.All()) {
        if (value.deleted)
            key.values.Remove(value.name);
        else
            key.SetValue(value);
    }
    for (const auto& child : overlay.children.All()) {
        if (child->mark != HiveKey::Mark::None) key.children.Remove(child->name);
        if (child->mark != HiveKey::Mark::Deleted) LayOver(*child, key.EnsureChild(child->name));
    }
}

// True where a key on the way, the last one included, is one that hides the base.
bool HidesBase(const HiveKey& overlay, const QStringList& path) {
    const HiveKey* key = &overlay;
    for (const QString& step : path) {
        const std::unique_ptr<HiveKey>* child = key->children.Find(step);
        if (child == nullptr) return false;
        key = child->get();
        if (key->mark != HiveKey::Mark::None) return true;
    }
    return false;
}

// The value that the change is about; null where there is none.
const HiveValue* ValueIn(const HiveKey& root, const Change& change) {
    const HiveKey* key = root.Find(change.path);
    return key != nullptr ? key->values.Find(change.value.name) : nullptr;
}

bool DeleteValue(const Change& change, const HiveKey& base, HiveKey& overlay) {
    if (ValueIn(base, change) == nullptr) return Apply(change, overlay);
    const HiveValue* old = ValueIn(overlay, change);
    if (old != nullptr && old->deleted) return false;
    overlay.Ensure(change.path)
        .SetValue({.name = change.value.name, .type = 0, .data = {}, .deleted = true});
    return true;
}

bool DeleteKey(const Change& change, const HiveKey& base, HiveKey& overlay) {
    if (base.Find(change.path) == nullptr) return Apply(change, overlay);
    HiveKey& key = overlay.Ensure(change.path);
    key.mark = HiveKey::Mark::Deleted;
    key.values.Clear();
    key.children.Clear();
    return true;
}

bool SetValue(const Change& change, HiveKey& overlay) {
    const HiveValue* old = ValueIn(overlay, change);
    if (old != nullptr && !old->deleted) return Apply(change, overlay);
    overlay.Ensure(change.path).SetValue(change.value);
    return true;
}

bool CreateKey(const Change& change, HiveKey& overlay) {
    const HiveKey* key = overlay.Find(change.path);
    if (key != nullptr && key->mark != HiveKey::Mark::Deleted) return false;
    overlay.Ensure(change.path);
    return true;
}

}  // namespace

HiveKey Merge(const HiveKey& base, const HiveKey& overlay) {
    HiveKey merged;
    CopyInto(base, merged);
    LayOver(overlay, merged);
    return merged;
}

bool ApplyToOverlay(const Change& change, const HiveKey& base, HiveKey& overlay) {
    switch (change.kind) {
        case Change::Kind::CreateKey:
            return CreateKey(change, overlay);
        case Change::Kind::SetValue:
            return SetValue(change, overlay);
        case Change::Kind::DeleteValue:
            return DeleteValue(change, base, overlay);
        case Change::Kind::DeleteKey:
            return DeleteKey(change, base, overlay);
    }
    return false;
}

bool Reveal(const Change& change, const HiveKey& base, HiveKey& overlay) {
    const bool adds =
        change.kind == Change::Kind::CreateKey || change.kind == Change::Kind::SetValue;
    if (adds && HidesBase(overlay, change.path)) return ApplyToOverlay(change, base, overlay);
    if (change.kind == Change::Kind::CreateKey) return false;
    if (change.kind == Change::Kind::DeleteKey) return Apply(change, overlay);
    HiveKey* key = overlay.Find(change.path);
    return key != nullptr && key->values.Remove(change.value.name);
}

}  // namespace quarv::registry
