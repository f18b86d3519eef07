#include "localdb/engine/DatabaseList.h"

#include <QDir>
#include <QFile>

#include "localdb/engine/DatabaseFile.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

const QString MasterName = QStringLiteral("master");

// What every file system can bear, so that a person finds the file of a database.
QString Readable(const QString& name) {
    QString text;
    for (const QChar unit : name.toLower()) {
        const bool plain = (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9');
        text += plain ? unit : QChar(u'_');
    }
    return text.left(40);
}

}  // namespace

DatabaseList::DatabaseList(const QString& directory) : directory_(directory) {
    if (!QDir().mkpath(directory)) throw SqlError(945, {MasterName});
    QFile::setPermissions(directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString path = PathFor(MasterId, MasterName);
    if (!QFile::exists(path)) {
        DatabaseFile::Make(path, MasterName);
        MasterFile(path).MakeList();
    }
    DatabaseFile::Upgrade(path);
    MasterFile master(path);
    for (DatabaseEntry& entry : master.Load()) {
        // Files are named relative to the directory, so that it can be moved as a whole.
        entry.path = QDir(directory_).filePath(entry.path);
        byName_[Key(entry.name)] = entry;
        try {
            DatabaseFile::Upgrade(entry.path);
        } catch (const SqlError&) {
            // Whoever opens the database hears of it; the others work.
        }
    }
    byName_[Key(MasterName)] = {MasterId, MasterName, path, DatabaseFile::Created(path)};
    nextId_ = master.NextId();
}

QString DatabaseList::PathFor(int id, const QString& name) const {
    const QString file = id == MasterId
                             ? QStringLiteral("master.sqlite")
                             : QStringLiteral("%1-%2.sqlite").arg(Readable(name)).arg(id);
    return QDir(directory_).filePath(file);
}

const DatabaseEntry& DatabaseList::Temporary() {
    // Made anew with every start.
    static const DatabaseEntry entry{TemporaryId, QStringLiteral("tempdb"), QString(),
                                     Moment::Now().Store(TypeKind::DateTime).value_or(0)};
    return entry;
}

std::optional<DatabaseEntry> DatabaseList::Find(const QString& name) const {
    if (Key(name) == Temporary().name) return Temporary();
    const std::lock_guard lock(mutex_);
    const auto found = byName_.find(Key(name));
    return found != byName_.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<DatabaseEntry> DatabaseList::Find(int id) const {
    if (id == TemporaryId) return Temporary();
    const std::lock_guard lock(mutex_);
    for (const auto& [key, entry] : byName_) {
        if (entry.id == id) return entry;
    }
    return std::nullopt;
}

std::vector<DatabaseEntry> DatabaseList::All() const {
    const std::lock_guard lock(mutex_);
    std::vector<DatabaseEntry> entries;
    for (const auto& [key, entry] : byName_) entries.push_back(entry);
    return entries;
}

DatabaseEntry DatabaseList::Create(const QString& name) {
    const std::lock_guard lock(mutex_);
    if (byName_.contains(Key(name)) || Key(name) == Temporary().name) throw SqlError(1801, {name});
    MasterFile master(PathFor(MasterId, MasterName));
    DatabaseEntry entry;
    entry.id = nextId_++;
    entry.name = name;
    entry.path = PathFor(entry.id, name);
    // The file first, then its entry: a file without an entry harms nobody.
    DatabaseFile::Remove(entry.path);
    DatabaseFile::Make(entry.path, name);
    entry.created = DatabaseFile::Created(entry.path);
    DatabaseEntry stored = entry;
    stored.path = QDir(directory_).relativeFilePath(entry.path);
    master.Add(stored, nextId_);
    byName_[Key(name)] = entry;
    return entry;
}

void DatabaseList::Drop(const QString& name) {
    const std::lock_guard lock(mutex_);
    const bool system = Key(name) == MasterName || Key(name) == Temporary().name;
    if (system) {
        throw SqlError(3708, {QStringLiteral("drop"), QStringLiteral("database"), name,
                              QStringLiteral("database")});
    }
    const auto found = byName_.find(Key(name));
    if (found == byName_.end()) {
        throw SqlError(3701, {QStringLiteral("drop"), QStringLiteral("database"), name});
    }
    if (users_[found->second.id] > 0) throw SqlError(3702, {name});
    MasterFile(PathFor(MasterId, MasterName)).Remove(found->second.id);
    DatabaseFile::Remove(found->second.path);
    byName_.erase(found);
}

DatabaseEntry DatabaseList::Rename(const QString& name, const QString& newName, int currentId) {
    const std::lock_guard lock(mutex_);
    const bool system = Key(name) == MasterName || Key(name) == Temporary().name;
    if (system) {
        throw SqlError(3708, {QStringLiteral("alter"), QStringLiteral("database"), name,
                              QStringLiteral("database")});
    }
    const auto found = byName_.find(Key(name));
    if (found == byName_.end()) throw SqlError(5011, {name});
    DatabaseEntry entry = found->second;
    const auto other = byName_.find(Key(newName));
    const bool taken = other != byName_.end() && other->second.id != entry.id;
    if (taken || Key(newName) == Temporary().name) throw SqlError(1801, {newName});
    if (users_[entry.id] > (entry.id == currentId ? 1 : 0)) throw SqlError(5030);
    MasterFile(PathFor(MasterId, MasterName)).Rename(entry.id, newName);
    byName_.erase(found);
    entry.name = newName;
    byName_[Key(newName)] = entry;
    return entry;
}

DatabaseEntry DatabaseList::Acquire(const QString& name) {
    if (Key(name) == Temporary().name) return Temporary();
    const std::lock_guard lock(mutex_);
    const auto found = byName_.find(Key(name));
    if (found == byName_.end()) throw SqlError(911, {name});
    ++users_[found->second.id];
    return found->second;
}

void DatabaseList::Release(int id) {
    const std::lock_guard lock(mutex_);
    --users_[id];
}

}  // namespace quarv::localdb::engine
