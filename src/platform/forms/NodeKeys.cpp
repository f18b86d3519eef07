#include "platform/forms/NodeKeys.h"

#include "platform/forms/Node.h"

namespace quarv::forms {

namespace {

constexpr std::size_t FirstSize = 64;

// The character in one of its cases; ASCII by one bit, which also takes a few other characters
// together.
quint32 Folded(const QChar*& at, const QChar* end) {
    const QChar c = *at++;
    if (c.unicode() < 0x80) return c.unicode() | 0x20U;
    if (c.isHighSurrogate() && at != end && at->isLowSurrogate())
        return QChar::toCaseFolded(QChar::surrogateToUcs4(c, *at++));
    return c.toCaseFolded().unicode() | 0x20U;
}

// Equal for keys that differ in letter case alone.
quint32 FoldedHash(const QString& key) {
    quint32 hash = 2166136261U;
    const QChar* const end = key.constData() + key.size();
    for (const QChar* at = key.constData(); at != end;) hash = (hash ^ Folded(at, end)) * 16777619U;
    return hash ^ hash >> 15;
}

}  // namespace

Node* NodeKeys::Find(const QString& key) const {
    return slots_.empty() ? nullptr : slots_[Place(key, FoldedHash(key))].node;
}

bool NodeKeys::Add(Node& node, const QString& key) {
    if (used_ * 2 >= slots_.size()) Grow();
    const quint32 hash = FoldedHash(key);
    Slot& slot = slots_[Place(key, hash)];
    if (slot.node != nullptr) return false;
    slot = {hash, &node};
    ++used_;
    return true;
}

void NodeKeys::Clear() {
    slots_.clear();
    used_ = 0;
}

std::size_t NodeKeys::Place(const QString& key, quint32 hash) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (
        slots_[at].node != nullptr &&
        (slots_[at].hash != hash || slots_[at].node->Key().compare(key, Qt::CaseInsensitive) != 0))
        at = (at + 1) & mask;
    return at;
}

void NodeKeys::Grow() {
    std::vector<Slot> old(slots_.empty() ? FirstSize : slots_.size() * 2);
    old.swap(slots_);
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.node == nullptr) continue;
        std::size_t at = slot.hash & mask;
        while (slots_[at].node != nullptr) at = (at + 1) & mask;
        slots_[at] = slot;
    }
}

}  // namespace quarv::forms
