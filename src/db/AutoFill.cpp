#include "db/AutoFill.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/Checked16.h"
#include "base/LateBinding.h"
#include "base/RUtils.h"
#include "base/RuntimeError.h"

namespace quarv {

namespace {

constexpr int LastLoaded = 50;
constexpr int LastDeleted = 20;
// UTF-16 units. One that no hive has room for would keep all the others from being saved.
constexpr qsizetype LongestSaved = 100'000;

const QString TextProperty = QStringLiteral("Text");

// Of a value by its name; none where the value is no entry of that key.
std::optional<qint64> PositionOf(const QString& name, const QString& key) {
    if (!TextStartsWith(name, key) || name.size() == key.size() || name.at(key.size()) != u'-')
        return std::nullopt;
    try {
        return Value(name.sliced(key.size() + 1)).ToInteger();
    } catch (const RuntimeError&) {
        return std::nullopt;  // one odd value must not cost the user the others
    }
}

QString DefaultName(const QString& key) {
    return key + QStringLiteral("Default");
}

}  // namespace

void AutoFill::Init(QObject& ctl, const QString& section, const QString& key, qint16 numMaxMRUs) {
    control_ = &ctl;
    section_ = section;
    key_ = key;
    maximum_ = std::max<qint16>(numMaxMRUs, 0);
    Load();
    Refresh();
}

void AutoFill::ShowAnyDefault() {
    SetByName(control_, TextProperty,
              registry_.GetSectionString(section_, DefaultName(key_), QString()));
}

void AutoFill::Add(const QString& str, bool saveIt) {
    if (str.isEmpty()) return;
    const qint16 found = items_.Find(str);
    if (found == 1) return;
    if (found > 1) items_.Remove(found);
    items_.Insert(str, 1);
    if (saveIt) SaveMRU();
    Refresh();
}

void AutoFill::EditsComplete(bool saveAsDefault) {
    const QString text = GetByName(control_, TextProperty).ToText();
    Add(text, true);
    if (saveAsDefault) registry_.SaveSectionString(section_, DefaultName(key_), text);
}

void AutoFill::SaveMRU() {
    Box();
    const int count = items_.Count();
    std::vector<RegistryPair> entries;
    QStringList stale;
    for (int i = 1; i <= count; ++i) {
        const QString& item = items_.Items(static_cast<qint16>(i));
        if (item.size() <= LongestSaved)
            entries.push_back({.Name = ValueName(i), .Value = item});
        else
            stale.append(ValueName(i));
    }
    // Deliberately no further than this: entries above it stay for good.
    for (int i = count + 1; i <= LastDeleted; ++i) stale.append(ValueName(i));
    registry_.SaveSectionStrings(section_, entries, stale);
}

QString AutoFill::ValueName(int position) const {
    return key_ + u'-' + QString::number(position);
}

void AutoFill::Load() {
    const std::vector<RegistryPair> values = registry_.GetSectionValues(section_);
    // Position 0 counts as one, but no entry is taken from it.
    std::array<const RegistryPair*, LastLoaded + 1> held{};
    for (const RegistryPair& value : values) {
        const auto position = PositionOf(value.Name, key_);
        if (position && *position >= 0 && *position <= LastLoaded) held[*position] = &value;
    }
    items_.Clear();
    for (int i = 1; i <= LastLoaded; ++i) {
        if (held[i] != nullptr) items_.Add(held[i]->Value);
    }
}

void AutoFill::Refresh() {
    while (items_.Count() > maximum_) items_.Remove(Add16(maximum_, 1));
    QObject& box = Box();
    const Value text = GetByName(&box, TextProperty);
    CallByName(&box, QStringLiteral("Clear"));
    items_.AddToListControl(box);
    SetByName(&box, TextProperty, text);
}

QObject& AutoFill::Box() const {
    if (control_ == nullptr) throw RuntimeError(RuntimeError::ObjectNotSet);
    return *control_;
}

}  // namespace quarv
