#include "platform/forms/NodeKeys.h"

#include <QRandomGenerator>
#include <QVarLengthArray>
#include <algorithm>
#include <cstring>

#include "platform/forms/NodeStore.h"

namespace quarv::forms {

namespace {

constexpr std::size_t FirstSize = 64;

// Room for the longest names that a server allows; longer keys go to the heap.
using FoldedKey = QVarLengthArray<char16_t, 160>;

// Any character, and a pair of them that stands for one; `at` moves behind what was read.
void FoldNext(QStringView text, qsizetype& at, char16_t* out) {
    const QChar c = text[at];
    if (c.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
        const char32_t folded = QChar::toCaseFolded(QChar::surrogateToUcs4(c, text[at + 1]));
        out[at] = QChar::highSurrogate(folded);
        out[at + 1] = QChar::lowSurrogate(folded);
        at += 2;
    } else {
        out[at++] = c.toCaseFolded().unicode() | 0x20U;
    }
}

// One case for all, ASCII by one bit, which also takes a few other characters together.
void AppendFolded(QStringView text, FoldedKey& folded) {
    const qsizetype before = folded.size();
    folded.append(text.utf16(), text.size());
    char16_t* const out = folded.data() + before;
    char16_t all = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        all |= out[i];
        out[i] |= 0x20U;
    }
    if (all < 0x80) return;
    for (qsizetype at = 0; at < text.size();) FoldNext(text, at, out);
}

// Drawn once a run, so that a server cannot choose names that all land in one place.
struct HashSecret {
    quint64 start = QRandomGenerator::system()->generate64();
    quint64 factor = QRandomGenerator::system()->generate64() | 1U;
};

// Equal for keys that differ in letter case alone, wherever they are split. It takes four
// characters a step, without the vector registers, whose switching to and fro would cost more.
quint32 FoldedHash(QStringView prefix, QStringView rest) {
    static const HashSecret secret;
    FoldedKey folded;
    AppendFolded(prefix, folded);
    AppendFolded(rest, folded);
    while (folded.size() % 4 != 0) folded.append(u'\0');
    quint64 hash = secret.start ^ static_cast<quint64>(prefix.size() + rest.size());
    for (qsizetype at = 0; at < folded.size(); at += 4) {
        quint64 four = 0;
        std::memcpy(&four, folded.constData() + at, sizeof four);
        hash = (hash ^ four) * secret.factor;
        hash ^= hash >> 29;
    }
    return static_cast<quint32>(hash ^ hash >> 32);
}

}  // namespace

int NodeKeys::Find(const QString& key) const {
    return slots_.empty() ? NoNode : slots_[Place(key, {}, FoldedHash(key, {}))].number;
}

bool NodeKeys::Add(int number, QStringView prefix, QStringView rest) {
    Reserve(1);
    const quint32 hash = FoldedHash(prefix, rest);
    Slot& slot = slots_[Place(prefix, rest, hash)];
    if (slot.number != NoNode) return false;
    slot = {hash, number};
    ++used_;
    return true;
}

bool NodeKeys::HasKey(int number, QStringView prefix, QStringView rest) const {
    QString key = prefix.toString();
    key.append(rest);
    return store_.KeyAt(number).compare(key, Qt::CaseInsensitive) == 0;
}

void NodeKeys::Reserve(std::size_t more) {
    std::size_t size = std::max(FirstSize, slots_.size());
    while ((used_ + more) * 2 > size) size *= 2;
    if (size != slots_.size()) Resize(size);
}

void NodeKeys::Clear() {
    slots_.clear();
    used_ = 0;
}

std::size_t NodeKeys::Place(QStringView prefix, QStringView rest, quint32 hash) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    while (slots_[at].number != NoNode &&
           (slots_[at].hash != hash || !HasKey(slots_[at].number, prefix, rest)))
        at = (at + 1) & mask;
    return at;
}

void NodeKeys::Resize(std::size_t size) {
    std::vector<Slot> old(size);
    old.swap(slots_);
    const std::size_t mask = size - 1;
    for (const Slot& slot : old) {
        if (slot.number == NoNode) continue;
        std::size_t at = slot.hash & mask;
        while (slots_[at].number != NoNode) at = (at + 1) & mask;
        slots_[at] = slot;
    }
}

}  // namespace quarv::forms
