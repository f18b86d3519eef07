// StringList: an ordered, growable list of texts with 1-based positions and a 16-bit count. A plain
// class without events; it knows no control but by name. Its owner is whoever made it.
#pragma once

#include <QObject>
#include <QString>

#include "base/Object.h"
#include "base/Slots.h"

namespace quarv {

class StringList : public Object {
  public:
    // The capacity for one item more no longer fits 16 bits.
    static constexpr qint16 MaxCount = 32757;

    // Raises Overflow for item MaxCount + 1.
    void Add(const QString& s);
    void AddFromStringList(const StringList& s);
    // The lines of `s`, which CR LF pairs part; a rest behind the last pair counts if not empty. A
    // lone CR or LF does not part.
    void AddFromString(const QString& s);
    // The item goes to `index`, later ones one place up; Count() + 1 appends. Other positions are
    // not validated: one outside the storage raises SubscriptOutOfRange.
    void Insert(const QString& s, qint16 index);
    // False where an equal item is present, in any letter case; then nothing is added.
    bool AddIfUnique(const QString& s);
    // Makes room for `n` items and ten more where there is none for `n`.
    void EnsureCanHold(qint16 n);

    qint16 Count() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }
    // The texts stay in their slots.
    void Clear() { count_ = 0; }

    // The text in a slot, which must lie inside the storage (SubscriptOutOfRange); it is not
    // compared with the count.
    const QString& Items(qint16 index) const { return slots_[index]; }
    void SetItems(qint16 index, const QString& s);

    // Calls the method AddItem of `c`, by name, with each item. Does not clear `c` first.
    void AddToListControl(QObject& c) const;

    // In any letter case.
    bool IsPresent(const QString& s) const { return Find(s) != -1; }
    // The first equal item, in any letter case; -1 where there is none.
    qint16 Find(const QString& s) const;

    // The old last slot becomes empty. Neither the position nor an empty list is refused.
    void Remove(qint16 index);
    // Appends the items of `r`.
    void Copy(const StringList& r, bool clearFirst = false);

    // A line an item, in UTF-8. Replaces the file, lines ended by CR LF. False, and nothing
    // written, where an existing file cannot be deleted. Raises PermissionDenied or PathFileAccess
    // where opening or writing fails, a full disk included. An item with a character of code 0
    // gives a file that LoadFromFile refuses.
    bool SaveToFile(const QString& path) const;
    // Appends the lines of the file, whichever of CR LF, CR and LF ends them: UTF-8, or UTF-16
    // where a byte order mark says so. False where there is no such file. Raises PermissionDenied
    // or PathFileAccess where it cannot be read, is no such text, holds a character of code 0 or is
    // larger than 64 MiB, and Overflow where the list cannot hold all its lines; each names the
    // file, and nothing is added.
    bool LoadFromFile(const QString& path);

    // Each item followed by CR LF.
    QString Text() const;
    // Joined with ", "; empty items at the start vanish without a separator.
    QString AsCommaList() const;

  private:
    Slots<QString> slots_;
    qint16 count_ = 0;
};

}  // namespace quarv
