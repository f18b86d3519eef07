#include "platform/registry/Hives.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "platform/registry/KeyPath.h"

namespace quarv::registry {

namespace {

constexpr mode_t PrivateFolder = 0700;
constexpr mode_t SharedFolder = 0755;

Report OrStderr(Report report) {
    if (report) return report;
    return
        [](const QString& line) { std::fprintf(stderr, "quarv: %s\n", line.toUtf8().constData()); };
}

QByteArrayView View(const char* text) {
    return text != nullptr ? QByteArrayView(text) : "";
}

quint32 Length(const QString& name) {
    return static_cast<quint32>(name.toUtf8().size());
}

// Copies out as every call does that gives data: null buffers ask for the size alone.
ResultCode GiveData(const QByteArray& from, void* data, quint32* size) {
    if (data != nullptr && size == nullptr) return ERROR_INVALID_PARAMETER;
    if (size == nullptr) return ERROR_SUCCESS;
    const quint32 room = *size;
    *size = static_cast<quint32>(from.size());
    if (data == nullptr) return ERROR_SUCCESS;
    if (room < *size) return ERROR_MORE_DATA;
    std::memcpy(data, from.constData(), *size);
    return ERROR_SUCCESS;
}

ResultCode GiveName(const QString& from, char* name, quint32* size) {
    if (name == nullptr || size == nullptr) return ERROR_INVALID_PARAMETER;
    const QByteArray bytes = from.toUtf8();
    if (*size <= static_cast<quint32>(bytes.size())) return ERROR_MORE_DATA;
    *size = static_cast<quint32>(bytes.size());
    std::memcpy(name, bytes.constData(), *size + 1);
    return ERROR_SUCCESS;
}

// The change of a value of the key at `path`, checked as every call checks a name and data.
ResultCode MakeChange(const ValueChange& from, const QStringList& path, Change& change) {
    const bool sets = from.data.has_value();
    change = {.kind = sets ? Change::Kind::SetValue : Change::Kind::DeleteValue,
              .path = path,
              .value = {}};
    if (CheckValueName(from.name, change.value.name) != ERROR_SUCCESS)
        return ERROR_INVALID_PARAMETER;
    if (!sets) return ERROR_SUCCESS;
    if (from.data->size() > MaxHiveBytes) return ERROR_NOT_ENOUGH_QUOTA;
    change.value.type = from.type;
    change.value.data = *from.data;
    return ERROR_SUCCESS;
}

}  // namespace

Hives::Snapshot::Snapshot(Hives& hives) : hives_(hives) {
    hives_.user_.Hold();
    hives_.machine_.Hold();
}

Hives::Snapshot::~Snapshot() {
    hives_.user_.Release();
    hives_.machine_.Release();
}

Hives::Hives(const HivePaths& paths, Report report)
    : user_(HiveFile(paths.user, HiveKind::Plain, PrivateFolder, OrStderr(report))),
      machine_(HiveFile(paths.machine, HiveKind::Plain, SharedFolder, OrStderr(report)),
               HiveFile(paths.overlay, HiveKind::Overlay, PrivateFolder, OrStderr(report))) {}

ResultCode Hives::RegCreateKeyEx(HKey key, const char* subKey, quint32 options, quint32 access,
                                 HKey* result, quint32* disposition) {
    if (subKey == nullptr || result == nullptr || options != REG_OPTION_NON_VOLATILE)
        return ERROR_INVALID_PARAMETER;
    OpenKey open;
    qsizetype levels = 0;
    ResultCode code = Below(key, subKey, open, &levels);
    if (code != ERROR_SUCCESS) return code;
    if (levels > MaxLevelsPerCreate) return ERROR_INVALID_PARAMETER;
    const bool exists = open.store->Root().Find(open.path) != nullptr;
    if (!exists)
        code = open.store->Write({.kind = Change::Kind::CreateKey, .path = open.path, .value = {}});
    if (code != ERROR_SUCCESS) return code;
    if (disposition != nullptr)
        *disposition = exists ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
    open.access = access;
    *result = Hand(open);
    return ERROR_SUCCESS;
}

ResultCode Hives::RegOpenKeyEx(HKey key, const char* subKey, quint32 access, HKey* result) {
    if (result == nullptr) return ERROR_INVALID_PARAMETER;
    OpenKey open;
    const ResultCode code = Below(key, subKey, open);
    if (code != ERROR_SUCCESS) return code;
    if (open.store->Root().Find(open.path) == nullptr) return ERROR_FILE_NOT_FOUND;
    open.access = access;
    *result = Hand(open);
    return ERROR_SUCCESS;
}

ResultCode Hives::RegSetValueEx(HKey key, const char* name, quint32 type, const void* data,
                                quint32 size) {
    HiveValue value{.name = {}, .type = type, .data = {}, .deleted = false};
    if ((data == nullptr && size > 0) || CheckValueName(View(name), value.name) != ERROR_SUCCESS)
        return ERROR_INVALID_PARAMETER;
    OpenKey open;
    const HiveKey* found = nullptr;
    const ResultCode code = Look(key, KEY_SET_VALUE, open, found);
    if (code != ERROR_SUCCESS) return code;
    if (size > MaxHiveBytes) return ERROR_NOT_ENOUGH_QUOTA;
    value.data = QByteArray(static_cast<const char*>(data), size);
    return open.store->Write(
        {.kind = Change::Kind::SetValue, .path = open.path, .value = std::move(value)});
}

ResultCode Hives::RegSetKeyValues(HKey key, const char* subKey,
                                  const std::vector<ValueChange>& changes) {
    OpenKey open;
    qsizetype levels = 0;
    ResultCode code = Below(key, subKey, open, &levels);
    if (code != ERROR_SUCCESS) return code;
    if ((open.access & KEY_SET_VALUE) == 0) return ERROR_ACCESS_DENIED;
    if (levels > MaxLevelsPerCreate) return ERROR_INVALID_PARAMETER;
    std::vector<Change> checked(changes.size());
    for (size_t i = 0; i < changes.size(); ++i) {
        code = MakeChange(changes[i], open.path, checked[i]);
        if (code != ERROR_SUCCESS) return code;
    }
    return open.store->Write(checked);
}

ResultCode Hives::RegQueryValueEx(HKey key, const char* name, quint32* type, void* data,
                                  quint32* size) {
    OpenKey open;
    const HiveKey* found = nullptr;
    const ResultCode code = Look(key, KEY_QUERY_VALUE, open, found);
    if (code != ERROR_SUCCESS) return code;
    QString valueName;
    if (CheckValueName(View(name), valueName) != ERROR_SUCCESS) return ERROR_FILE_NOT_FOUND;
    const HiveValue* value = found->values.Find(valueName);
    if (value == nullptr) return ERROR_FILE_NOT_FOUND;
    if (type != nullptr) *type = value->type;
    return GiveData(value->data, data, size);
}

ResultCode Hives::RegQueryInfoKey(HKey key, KeyInfo* info) {
    if (info == nullptr) return ERROR_INVALID_PARAMETER;
    OpenKey open;
    const HiveKey* found = nullptr;
    const ResultCode code = Look(key, KEY_QUERY_VALUE, open, found);
    if (code != ERROR_SUCCESS) return code;
    *info = {};
    info->subKeys = static_cast<quint32>(found->children.Count());
    info->values = static_cast<quint32>(found->values.Count());
    for (const auto& child : found->children.All())
        info->maxSubKeyName = std::max(info->maxSubKeyName, Length(child->name));
    for (const HiveValue& value : found->values.All()) {
        info->maxValueName = std::max(info->maxValueName, Length(value.name));
        info->maxData = std::max(info->maxData, static_cast<quint32>(value.data.size()));
    }
    return ERROR_SUCCESS;
}

ResultCode Hives::RegEnumValue(HKey key, quint32 index, char* name, quint32* nameSize,
                               quint32* type, void* data, quint32* size) {
    OpenKey open;
    const HiveKey* found = nullptr;
    ResultCode code = Look(key, KEY_QUERY_VALUE, open, found);
    if (code != ERROR_SUCCESS) return code;
    if (index >= found->values.Count()) return ERROR_NO_MORE_ITEMS;
    const HiveValue& value = found->values.At(index);
    code = GiveName(value.name, name, nameSize);
    if (code != ERROR_SUCCESS) return code;
    if (type != nullptr) *type = value.type;
    return GiveData(value.data, data, size);
}

ResultCode Hives::RegEnumKeyEx(HKey key, quint32 index, char* name, quint32* nameSize) {
    OpenKey open;
    const HiveKey* found = nullptr;
    const ResultCode code = Look(key, KEY_ENUMERATE_SUB_KEYS, open, found);
    if (code != ERROR_SUCCESS) return code;
    if (index >= found->children.Count()) return ERROR_NO_MORE_ITEMS;
    return GiveName(found->children.At(index)->name, name, nameSize);
}

ResultCode Hives::RegDeleteValue(HKey key, const char* name) {
    OpenKey open;
    const HiveKey* found = nullptr;
    const ResultCode code = Look(key, KEY_SET_VALUE, open, found);
    if (code != ERROR_SUCCESS) return code;
    HiveValue value;
    if (CheckValueName(View(name), value.name) != ERROR_SUCCESS) return ERROR_FILE_NOT_FOUND;
    if (found->values.Find(value.name) == nullptr) return ERROR_FILE_NOT_FOUND;
    return open.store->Write(
        {.kind = Change::Kind::DeleteValue, .path = open.path, .value = std::move(value)});
}

ResultCode Hives::RegDeleteTree(HKey key, const char* subKey) {
    OpenKey open;
    qsizetype levels = 0;
    const ResultCode code = Below(key, subKey, open, &levels);
    if (code != ERROR_SUCCESS) return code;
    if (levels == 0) return ERROR_INVALID_PARAMETER;
    if (open.store->Root().Find(open.path) == nullptr) return ERROR_FILE_NOT_FOUND;
    return open.store->Write({.kind = Change::Kind::DeleteKey, .path = open.path, .value = {}});
}

ResultCode Hives::RegCloseKey(HKey key) {
    if (key == HKEY_CURRENT_USER || key == HKEY_LOCAL_MACHINE) return ERROR_SUCCESS;
    return open_.remove(static_cast<quint32>(key)) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

ResultCode Hives::Resolve(HKey key, OpenKey& open) {
    if (key == HKEY_CURRENT_USER || key == HKEY_LOCAL_MACHINE) {
        HiveStore& store = key == HKEY_CURRENT_USER ? user_ : machine_;
        open = {.store = &store, .path = {}, .access = KEY_ALL_ACCESS};
        return ERROR_SUCCESS;
    }
    const auto found = open_.constFind(static_cast<quint32>(key));
    if (found == open_.constEnd()) return ERROR_INVALID_HANDLE;
    open = *found;
    return ERROR_SUCCESS;
}

ResultCode Hives::Look(HKey key, quint32 needed, OpenKey& open, const HiveKey*& found) {
    ResultCode code = Resolve(key, open);
    if (code != ERROR_SUCCESS) return code;
    if ((open.access & needed) != needed) return ERROR_ACCESS_DENIED;
    code = open.store->Read();
    if (code != ERROR_SUCCESS) return code;
    found = open.store->Root().Find(open.path);
    return found != nullptr ? ERROR_SUCCESS : ERROR_KEY_DELETED;
}

ResultCode Hives::Below(HKey key, const char* subKey, OpenKey& open, qsizetype* levels) {
    // The rights of a handle do not count for what is opened, made or deleted below it.
    const HiveKey* found = nullptr;
    ResultCode code = Look(key, 0, open, found);
    if (code != ERROR_SUCCESS) return code;
    QStringList names;
    code = SplitKeyPath(View(subKey), names);
    if (code != ERROR_SUCCESS) return code;
    if (open.path.size() + names.size() > MaxDepth) return ERROR_INVALID_PARAMETER;
    if (levels != nullptr) *levels = names.size();
    open.path += names;
    return ERROR_SUCCESS;
}

HKey Hives::Hand(const OpenKey& open) {
    while (open_.contains(next_) || next_ >= 0x80000000u)
        next_ = next_ < 0x80000000u ? next_ + 4 : 4;
    open_.insert(next_, open);
    const HKey key{next_};
    next_ += 4;
    return key;
}

}  // namespace quarv::registry
