// AutoFillFixture: a combo box with its history in a registry of its own, of which other programs
// can have their view too.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "db/AutoFill.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Form.h"
#include "support/Raised.h"

namespace quarv {

class AutoFillFixture : public testing::Test {
  protected:
    static constexpr const char* Section = "where";
    static constexpr const char* Key = "Where";

    AutoFillFixture() { registry_.SetCurrentRoot(registry::HKEY_CURRENT_USER); }

    registry::HivePaths Paths() const {
        const QByteArray root = folder_.path().toUtf8();
        return {.user = root + "/user.hive",
                .machine = root + "/machine/machine.hive",
                .overlay = root + "/overlay.hive"};
    }

    // One that starts now with a box of its own: nothing is shared but the files.
    struct OtherProgram {
        explicit OtherProgram(const registry::HivePaths& paths) : hives(paths) {
            registry.SetCurrentRoot(registry::HKEY_CURRENT_USER);
            fill.Init(box, Section, Key);
        }

        registry::Hives hives;
        Registry registry{hives};
        forms::Form form{QStringLiteral("G")};
        forms::ComboBox box{&form, QStringLiteral("Other")};
        AutoFill fill{registry};
    };

    void Store(const char* name, const QString& text) {
        registry_.SaveSectionString(Section, name, text);
    }

    // "(none)" where there is no such text.
    QString Stored(const char* name) { return registry_.GetSectionString(Section, name, "(none)"); }

    // The section's texts as "name=text", in the order in which they came.
    QStringList AllStored() {
        QStringList all;
        for (const RegistryPair& pair : registry_.GetSectionValues(Section))
            all.append(pair.Name + u'=' + pair.Value);
        return all;
    }

    void Init() { fill_.Init(box_, Section, Key); }
    void Init(qint16 maximum) { fill_.Init(box_, Section, Key, maximum); }

    static QStringList ListOf(const forms::ComboBox& box) {
        QStringList list;
        for (int i = 0; i < box.ListCount(); ++i) list.append(box.List(i));
        return list;
    }
    QStringList List() const { return ListOf(box_); }

    QTemporaryDir folder_;
    registry::Hives hives_{Paths()};
    Registry registry_{hives_};
    forms::Form form_{QStringLiteral("F")};
    forms::ComboBox box_{&form_, QStringLiteral("Condition")};
    AutoFill fill_{registry_};
};

}  // namespace quarv
