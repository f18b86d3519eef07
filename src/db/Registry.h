// Registry: the module through which the system keeps its few settings, so that callers deal only
// in key paths, value names and texts. The program makes one and lends it out. No failure of the
// registry is ever reported: reads fall back to their defaults, writes that fail are dropped. It
// knows no file.
#pragma once

#include <QStringList>
#include <vector>

#include "base/Value.h"
#include "platform/registry/Hives.h"

namespace quarv {

struct RegistryPair {
    QString Name;
    QString Value;

    bool operator==(const RegistryPair&) const = default;
};

class Registry {
  public:
    // `hives` outlives this.
    explicit Registry(registry::Hives& hives) : hives_(hives) {}

    // What every key path below is relative to. It holds no hive (zero) until the first
    // SetMachineString: until then section reads give their defaults and section writes are lost.
    registry::HKey CurrentRoot() const { return currentRoot_; }
    void SetCurrentRoot(registry::HKey root) { currentRoot_ = root; }

    // Makes the key, which leaves it closed.
    void CreateKey(const QString& keyPath);
    // Type 1 (REG_SZ) sets a text, type 4 (REG_DWORD) a signed 32-bit number; other types nothing.
    // Raises Overflow for a larger number and what the value's conversion raises.
    void SetValueEx(registry::HKey key, const QString& name, quint32 type, const Value& value);
    // A text, a number, or empty where there is no such value or it is of another type.
    Value QueryValueEx(registry::HKey key, const QString& name);
    // The same of a closed key.
    Value QueryValue(const QString& keyPath, const QString& name);
    // SetValueEx of a closed key, which is made where it is not there.
    void SetKeyValue(const QString& keyPath, const QString& name, const Value& value, quint32 type);

    // An empty result, the empty text included, gives the default. The current root stays.
    QString GetString(registry::HKey hive, const QString& keyPath, const QString& name,
                      const QString& defaultText);
    QString GetMachineString(const QString& keyPath, const QString& name,
                             const QString& defaultText);
    // The current root becomes the current user's, whatever it was and however the write ended.
    void SetMachineString(const QString& keyPath, const QString& name, const QString& text);

    // A section is a key path under the current root.
    QString GetSectionString(const QString& section, const QString& name,
                             const QString& defaultText);
    void SaveSectionString(const QString& section, const QString& name, const QString& text);
    // Sets the texts in their order, then deletes the values of those names, in one write: another
    // program sees the section before or after. Nothing is written where nothing changes.
    void SaveSectionStrings(const QString& section, const std::vector<RegistryPair>& texts,
                            const QStringList& deletedNames);
    // The texts as they are at one moment, in the order in which they are enumerated. A value with
    // a name of more than 89 bytes or data of more than 510 bytes and the terminator is left out.
    std::vector<RegistryPair> GetSectionValues(const QString& section);
    void DeleteSectionValue(const QString& section, const QString& name);

  private:
    // No key where it cannot be opened; `code` may be null.
    registry::HKey Open(const QString& keyPath, quint32 access,
                        registry::ResultCode* code = nullptr);

    registry::Hives& hives_;
    registry::HKey currentRoot_ = registry::NoKey;
    const QString sectionPrefix_;  // in front of every section name; never assigned, always empty
};

}  // namespace quarv
