#include "db/Registry.h"

#include <QScopeGuard>
#include <QtEndian>
#include <array>
#include <limits>

#include "base/RuntimeError.h"
#include "platform/registry/Utf8.h"

namespace quarv {

using namespace registry;

namespace {

// A text's bytes with its terminator, which is not returned.
QString TextOf(QByteArrayView data) {
    return data.isEmpty() ? QString() : FromUtf8(data.chopped(1));
}

// The other way.
QByteArray DataOf(const QString& text) {
    return text.toUtf8().append('\0');
}

QString TextOrDefault(const Value& value, const QString& defaultText) {
    const QString text = value.IsEmpty() ? QString() : value.ToText();
    return text.isEmpty() ? defaultText : text;
}

}  // namespace

HKey Registry::Open(const QString& keyPath, quint32 access, ResultCode* code) {
    HKey key = NoKey;
    const ResultCode result =
        hives_.RegOpenKeyEx(currentRoot_, keyPath.toUtf8().constData(), access, &key);
    if (code != nullptr) *code = result;
    return key;
}

void Registry::CreateKey(const QString& keyPath) {
    HKey key = NoKey;
    hives_.RegCreateKeyEx(currentRoot_, keyPath.toUtf8().constData(), REG_OPTION_NON_VOLATILE,
                          KEY_ALL_ACCESS, &key);
    hives_.RegCloseKey(key);
}

void Registry::SetValueEx(HKey key, const QString& name, quint32 type, const Value& value) {
    QByteArray data;
    if (type == REG_SZ) {
        data = DataOf(value.ToText());
    } else if (type == REG_DWORD) {
        const qint64 number = value.ToInteger();
        using Long = std::numeric_limits<qint32>;
        if (number < Long::min() || number > Long::max())
            throw RuntimeError(RuntimeError::Overflow);
        data.resize(4);
        qToLittleEndian(static_cast<qint32>(number), data.data());
    } else {
        return;
    }
    hives_.RegSetValueEx(key, name.toUtf8().constData(), type, data.constData(),
                         static_cast<quint32>(data.size()));
}

Value Registry::QueryValueEx(HKey key, const QString& name) {
    const QByteArray valueName = name.toUtf8();
    quint32 type = REG_NONE;
    quint32 size = 0;
    if (hives_.RegQueryValueEx(key, valueName.constData(), &type, nullptr, &size) != ERROR_SUCCESS)
        return {};
    if (type == REG_SZ) {
        QByteArray data(size, '\0');
        if (hives_.RegQueryValueEx(key, valueName.constData(), nullptr, data.data(), &size) !=
            ERROR_SUCCESS)
            return {};
        return TextOf(QByteArrayView(data).first(size));
    }
    if (type == REG_DWORD) {
        std::array<char, 4> data{};
        size = data.size();
        if (hives_.RegQueryValueEx(key, valueName.constData(), nullptr, data.data(), &size) !=
            ERROR_SUCCESS)
            return {};
        return qFromLittleEndian<qint32>(data.data());
    }
    return {};
}

Value Registry::QueryValue(const QString& keyPath, const QString& name) {
    const HKey key = Open(keyPath, KEY_QUERY_VALUE);
    const Value value = QueryValueEx(key, name);
    hives_.RegCloseKey(key);
    return value;
}

void Registry::SetKeyValue(const QString& keyPath, const QString& name, const Value& value,
                           quint32 type) {
    ResultCode code = ERROR_SUCCESS;
    HKey key = Open(keyPath, KEY_SET_VALUE, &code);
    if (code == ERROR_FILE_NOT_FOUND) {
        CreateKey(keyPath);
        key = Open(keyPath, KEY_SET_VALUE);
    }
    const auto close = qScopeGuard([&] { hives_.RegCloseKey(key); });
    SetValueEx(key, name, type, value);
}

QString Registry::GetString(HKey hive, const QString& keyPath, const QString& name,
                            const QString& defaultText) {
    const HKey saved = currentRoot_;
    currentRoot_ = hive;
    const Value value = QueryValue(keyPath, name);
    currentRoot_ = saved;
    return TextOrDefault(value, defaultText);
}

QString Registry::GetMachineString(const QString& keyPath, const QString& name,
                                   const QString& defaultText) {
    return GetString(HKEY_LOCAL_MACHINE, keyPath, name, defaultText);
}

void Registry::SetMachineString(const QString& keyPath, const QString& name, const QString& text) {
    currentRoot_ = HKEY_LOCAL_MACHINE;
    SetKeyValue(keyPath, name, text, REG_SZ);
    // Deliberately not the root from before: this is what gives the section operations their hive.
    currentRoot_ = HKEY_CURRENT_USER;
}

QString Registry::GetSectionString(const QString& section, const QString& name,
                                   const QString& defaultText) {
    return TextOrDefault(QueryValue(sectionPrefix_ + section, name), defaultText);
}

void Registry::SaveSectionString(const QString& section, const QString& name, const QString& text) {
    SetKeyValue(sectionPrefix_ + section, name, text, REG_SZ);
}

void Registry::SaveSectionStrings(const QString& section, const std::vector<RegistryPair>& texts,
                                  const QStringList& deletedNames) {
    std::vector<ValueChange> changes;
    changes.reserve(texts.size() + static_cast<size_t>(deletedNames.size()));
    for (const RegistryPair& text : texts)
        changes.push_back({.name = text.Name.toUtf8(), .type = REG_SZ, .data = DataOf(text.Value)});
    for (const QString& name : deletedNames)
        changes.push_back({.name = name.toUtf8(), .type = REG_NONE, .data = {}});
    hives_.RegSetKeyValues(currentRoot_, (sectionPrefix_ + section).toUtf8().constData(), changes);
}

std::vector<RegistryPair> Registry::GetSectionValues(const QString& section) {
    const Hives::Snapshot snapshot(hives_);
    std::vector<RegistryPair> pairs;
    ResultCode code = ERROR_SUCCESS;
    const HKey key = Open(sectionPrefix_ + section, KEY_ALL_ACCESS, &code);
    if (code != ERROR_SUCCESS) return pairs;
    KeyInfo info;
    hives_.RegQueryInfoKey(key, &info);
    for (quint32 index = 0; index < info.values; ++index) {
        std::array<char, 110> name{};
        std::array<char, 511> data{};
        quint32 nameSize = 90;  // deliberately less than the buffer holds
        quint32 size = data.size();
        quint32 type = REG_NONE;
        code = hives_.RegEnumValue(key, index, name.data(), &nameSize, &type, data.data(), &size);
        if (code != ERROR_SUCCESS || type != REG_SZ) continue;
        pairs.push_back({.Name = FromUtf8(QByteArrayView(name.data(), nameSize)),
                         .Value = TextOf(QByteArrayView(data.data(), size))});
    }
    hives_.RegCloseKey(key);
    return pairs;
}

void Registry::DeleteSectionValue(const QString& section, const QString& name) {
    ResultCode code = ERROR_SUCCESS;
    const HKey key = Open(sectionPrefix_ + section, KEY_SET_VALUE, &code);
    if (code == ERROR_FILE_NOT_FOUND) return;
    hives_.RegDeleteValue(key, name.toUtf8().constData());
    hives_.RegCloseKey(key);
}

}  // namespace quarv
