// The registry's handles and constants, by the numbers of Microsoft's Win32 API reference
// ("Predefined Keys", "Registry Key Security and Access Rights", "Registry Value Types").
#pragma once

#include <QtGlobal>

namespace quarv::registry {

// A predefined key or what RegOpenKeyEx and RegCreateKeyEx gave; zero is no key.
enum class HKey : quint32 {};

inline constexpr HKey NoKey{0};
inline constexpr HKey HKEY_CURRENT_USER{0x80000001u};
inline constexpr HKey HKEY_LOCAL_MACHINE{0x80000002u};

enum ValueType : quint32 {
    REG_NONE = 0,
    REG_SZ = 1,
    REG_EXPAND_SZ = 2,
    REG_BINARY = 3,
    REG_DWORD = 4,
    REG_MULTI_SZ = 7,
    REG_QWORD = 11,
};

// Only the rights that are particular to keys are kept; other bits are accepted and mean nothing.
enum AccessRight : quint32 {
    KEY_QUERY_VALUE = 1,
    KEY_SET_VALUE = 2,
    KEY_CREATE_SUB_KEY = 4,
    KEY_ENUMERATE_SUB_KEYS = 8,
    KEY_NOTIFY = 16,
    KEY_CREATE_LINK = 32,
    KEY_ALL_ACCESS = 63,
};

enum Disposition : quint32 { REG_CREATED_NEW_KEY = 1, REG_OPENED_EXISTING_KEY = 2 };

inline constexpr quint32 REG_OPTION_NON_VOLATILE = 0;

// "Registry Element Size Limits": names in UTF-16 units, without the terminator.
inline constexpr qsizetype MaxKeyName = 255;
inline constexpr qsizetype MaxValueName = 16383;
inline constexpr qsizetype MaxDepth = 512;
inline constexpr qsizetype MaxLevelsPerCreate = 32;

}  // namespace quarv::registry
