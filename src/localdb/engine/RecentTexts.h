// RecentTexts: the trees of texts that came more than once, least recently used first to go. A text
// is kept from its second time on, so that batches which differ in their literals, and never come
// again, push nothing out. Bounded in number and in text; a tree takes some ten to fifty times the
// memory of its text.
#pragma once

#include <QHashFunctions>
#include <QString>
#include <array>
#include <list>
#include <memory>
#include <unordered_map>
#include <utility>

namespace quarv::localdb::engine {

template <class Tree>
class RecentTexts {
  public:
    static constexpr size_t Most = 64;
    static constexpr qsizetype LongestText = 16 * 1024;  // UTF-16 units
    static constexpr qsizetype MostUnits = 64 * 1024;    // of all texts

    // The text's tree: one that is kept, or what `parse` makes of it. It stays as long as anybody
    // holds it.
    template <class Parse>
    std::shared_ptr<const Tree> Find(const QString& text, Parse parse) {
        const auto found = byText_.find(text);
        if (found != byText_.end()) {
            entries_.splice(entries_.begin(), entries_, found->second);
            return found->second->second;
        }
        std::shared_ptr<const Tree> tree = parse(text);
        if (text.size() <= LongestText && CameBefore(text)) Keep(text, tree);
        return tree;
    }

    size_t Count() const { return entries_.size(); }

  private:
    using Entry = std::pair<QString, std::shared_ptr<const Tree>>;

    // Remembers the text by its hash alone.
    bool CameBefore(const QString& text) {
        const size_t hash = qHash(text, 1);
        return std::exchange(seen_[hash % seen_.size()], hash) == hash;
    }

    void Keep(const QString& text, const std::shared_ptr<const Tree>& tree) {
        entries_.emplace_front(text, tree);
        byText_.emplace(text, entries_.begin());
        units_ += text.size();
        while (entries_.size() > Most || units_ > MostUnits) {
            units_ -= entries_.back().first.size();
            byText_.erase(entries_.back().first);
            entries_.pop_back();
        }
    }

    std::list<Entry> entries_;  // the last used first
    std::unordered_map<QString, typename std::list<Entry>::iterator> byText_;
    qsizetype units_ = 0;
    std::array<size_t, 256> seen_{};
};

}  // namespace quarv::localdb::engine
