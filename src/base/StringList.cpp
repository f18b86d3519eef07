#include "base/StringList.h"

#include "base/LateBinding.h"
#include "base/LineFile.h"
#include "base/RUtils.h"

namespace quarv {

namespace {

constexpr QStringView LineEnd = u"\r\n";

}  // namespace

void StringList::Add(const QString& s) {
    const QString held = s;  // `s` may live in the storage that is about to move
    EnsureCanHold(Add16(count_, 1));
    slots_[++count_] = held;
}

void StringList::AddFromStringList(const StringList& s) {
    const qint16 last = s.count_;  // taken once: `s` may be this list
    for (int i = 1; i <= last; ++i) Add(s.slots_[i]);
}

void StringList::AddFromString(const QString& s) {
    qsizetype start = 0;
    for (qsizetype end = s.indexOf(LineEnd); end >= 0; end = s.indexOf(LineEnd, start)) {
        Add(s.sliced(start, end - start));
        start = end + LineEnd.size();
    }
    if (start < s.size()) Add(s.sliced(start));
}

void StringList::Insert(const QString& s, qint16 index) {
    const QString held = s;
    EnsureCanHold(Add16(count_, 1));
    slots_.MoveUp(index, count_);
    slots_[index] = held;
    ++count_;
}

bool StringList::AddIfUnique(const QString& s) {
    if (IsPresent(s)) return false;
    Add(s);
    return true;
}

void StringList::EnsureCanHold(qint16 n) {
    slots_.EnsureCanHold(n);
}

void StringList::SetItems(qint16 index, const QString& s) {
    slots_[index] = s;
}

void StringList::AddToListControl(QObject& c) const {
    for (int i = 1; i <= count_; ++i) {
        CallByName(&c, QStringLiteral("AddItem"), {Value(slots_[i])});
    }
}

qint16 StringList::Find(const QString& s) const {
    for (int i = 1; i <= count_; ++i) {
        if (SameText(slots_[i], s)) return static_cast<qint16>(i);
    }
    return -1;
}

void StringList::Remove(qint16 index) {
    slots_.MoveDown(index, count_);
    slots_[count_] = QString();
    count_ = Add16(count_, -1);
}

void StringList::Copy(const StringList& r, bool clearFirst) {
    if (clearFirst) Clear();
    AddFromStringList(r);
}

bool StringList::SaveToFile(const QString& path) const {
    if (!LineFile::Delete(path)) return false;
    LineFile::Write(path, Text());
    return true;
}

bool StringList::LoadFromFile(const QString& path) {
    if (!FileExists(path)) return false;
    for (const QString& line : LineFile::Read(path, MaxCount - count_)) Add(line);
    return true;
}

QString StringList::Text() const {
    QString text;
    for (int i = 1; i <= count_; ++i) text.append(slots_[i]).append(LineEnd);
    return text;
}

QString StringList::AsCommaList() const {
    QString list;
    for (int i = 1; i <= count_; ++i) AddToCommaList(list, slots_[i]);
    return list;
}

}  // namespace quarv
