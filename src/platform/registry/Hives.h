// Hives: the platform's registry calls, in their ANSI forms, over the two hives. Texts and names
// are UTF-8 and lengths are bytes; key paths and names match in any letter case and keep the case
// in which they were made. Made once by a program; one thread at a time. Results are those of the
// calls' namesakes in Microsoft's Win32 API reference ("Registry Functions"): nothing is raised.
#pragma once

#include <QHash>
#include <optional>
#include <vector>

#include "platform/registry/HivePaths.h"
#include "platform/registry/HiveStore.h"
#include "platform/registry/RegTypes.h"

namespace quarv::registry {

struct KeyInfo {
    quint32 subKeys = 0;
    quint32 maxSubKeyName = 0;  // bytes without the terminator, as the next
    quint32 values = 0;
    quint32 maxValueName = 0;
    quint32 maxData = 0;  // bytes, a text's terminator included
};

// What becomes of one value.
struct ValueChange {
    QByteArray name;  // empty for the key's default value
    quint32 type = REG_NONE;
    std::optional<QByteArray> data;  // as RegSetValueEx takes it; nothing: the value is deleted
};

class Hives {
  public:
    // While one lives, reads see one state of each hive file, that of the first read or of the last
    // write through the same Hives, whatever other programs write meanwhile. `hives` outlives it.
    class Snapshot {
      public:
        explicit Snapshot(Hives& hives);
        ~Snapshot();
        Q_DISABLE_COPY_MOVE(Snapshot)

      private:
        Hives& hives_;
    };

    // `report` takes a line for each damaged file; none given: they go to stderr.
    explicit Hives(const HivePaths& paths, Report report = {});

    // Opens or makes the key. `options` must be REG_OPTION_NON_VOLATILE and at most 32 names may be
    // given (ERROR_INVALID_PARAMETER). `disposition` may be null. The caller closes `*result`.
    ResultCode RegCreateKeyEx(HKey key, const char* subKey, quint32 options, quint32 access,
                              HKey* result, quint32* disposition = nullptr);
    // ERROR_FILE_NOT_FOUND where there is no such key; null or "" opens `key` itself once more.
    ResultCode RegOpenKeyEx(HKey key, const char* subKey, quint32 access, HKey* result);
    // Needs KEY_SET_VALUE. A null name or "" is the default value. `size` counts a text's
    // terminator; the bytes are kept as they are.
    ResultCode RegSetValueEx(HKey key, const char* name, quint32 type, const void* data,
                             quint32 size);
    // As the platform sets one value below a key, but several: in their order, all at one stroke or
    // none; another program sees the values before or after. Needs KEY_SET_VALUE of `key`. The key
    // `subKey` is made for the first value that is set in it; a null one or "" is `key` itself. To
    // delete what is not there is no error. Nothing is written where nothing changes.
    ResultCode RegSetKeyValues(HKey key, const char* subKey,
                               const std::vector<ValueChange>& changes);
    // Needs KEY_QUERY_VALUE. Any of the pointers may be null; `size` goes in as the buffer's bytes
    // and comes back as the data's. ERROR_MORE_DATA where the buffer is too small.
    ResultCode RegQueryValueEx(HKey key, const char* name, quint32* type, void* data,
                               quint32* size);
    // Needs KEY_QUERY_VALUE.
    ResultCode RegQueryInfoKey(HKey key, KeyInfo* info);
    // Needs KEY_QUERY_VALUE. `index` is 0-based, in the order in which values came.
    // `nameSize` goes in as the buffer's bytes, terminator included, and comes back without it.
    // ERROR_MORE_DATA where either buffer is too small, ERROR_NO_MORE_ITEMS past the last.
    ResultCode RegEnumValue(HKey key, quint32 index, char* name, quint32* nameSize, quint32* type,
                            void* data, quint32* size);
    // As RegEnumValue for the names of the keys below. Needs KEY_ENUMERATE_SUB_KEYS.
    ResultCode RegEnumKeyEx(HKey key, quint32 index, char* name, quint32* nameSize);
    // Needs KEY_SET_VALUE. ERROR_FILE_NOT_FOUND where there is no such value.
    ResultCode RegDeleteValue(HKey key, const char* name);
    // Deletes the key and all below it; a null or empty `subKey` is refused
    // (ERROR_INVALID_PARAMETER). Handles to what is gone answer ERROR_KEY_DELETED.
    ResultCode RegDeleteTree(HKey key, const char* subKey);
    // ERROR_INVALID_HANDLE for what is not open; predefined keys stay open.
    ResultCode RegCloseKey(HKey key);

  private:
    struct OpenKey {
        HiveStore* store = nullptr;
        QStringList path;
        quint32 access = 0;
    };

    // The open key, its rights unchecked. ERROR_INVALID_HANDLE.
    ResultCode Resolve(HKey key, OpenKey& open);
    // The open key's place in the tree as it is now; checks `needed` rights.
    ResultCode Look(HKey key, quint32 needed, OpenKey& open, const HiveKey*& found);
    // The same and `subKey` below it appended to the path, neither need exist.
    ResultCode Below(HKey key, const char* subKey, OpenKey& open, qsizetype* levels = nullptr);
    HKey Hand(const OpenKey& open);

    HiveStore user_;
    HiveStore machine_;
    QHash<quint32, OpenKey> open_;
    quint32 next_ = 4;
};

}  // namespace quarv::registry
