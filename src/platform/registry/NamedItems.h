// NamedItems: items in the order in which they came, found by name in any letter case, with the
// name kept as it was first given. T has a member `name`, or points to something that has.
#pragma once

#include <QHash>
#include <QString>
#include <vector>

namespace quarv::registry {

template <typename T>
class NamedItems {
  public:
    qsizetype Count() const { return static_cast<qsizetype>(items_.size()); }
    const std::vector<T>& All() const { return items_; }
    const T& At(qsizetype index) const { return items_[static_cast<size_t>(index)]; }

    // Null where there is none; valid until the next Add or Remove.
    const T* Find(const QString& name) const {
        const auto found = positions_.constFind(name.toCaseFolded());
        return found == positions_.constEnd() ? nullptr : &items_[static_cast<size_t>(*found)];
    }
    T* Find(const QString& name) { return const_cast<T*>(std::as_const(*this).Find(name)); }

    // The name must not be there yet.
    T& Add(const QString& name, T item) {
        positions_.insert(name.toCaseFolded(), Count());
        items_.push_back(std::move(item));
        return items_.back();
    }

    // False where there is none.
    bool Remove(const QString& name) {
        const auto found = positions_.find(name.toCaseFolded());
        if (found == positions_.end()) return false;
        const qsizetype gone = *found;
        positions_.erase(found);
        items_.erase(items_.begin() + gone);
        for (qsizetype& position : positions_)
            if (position > gone) --position;
        return true;
    }

    void Clear() {
        items_.clear();
        positions_.clear();
    }

  private:
    std::vector<T> items_;
    QHash<QString, qsizetype> positions_;  // case-folded name to index
};

}  // namespace quarv::registry
