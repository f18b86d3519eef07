// ConnectionDialogFixture: the connection dialog over a scripted server, settings of its own and a
// main window that only notes what it is asked for.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTest>

#include "base/DataError.h"
#include "base/LateBinding.h"
#include "db/ConnectionDetailsControls.h"
#include "db/Registry.h"
#include "db/SQLServerConnectionDetails.h"
#include "platform/ado/MemoryConnection.h"
#include "platform/forms/MessageHooks.h"
#include "support/BoxWatcher.h"
#include "support/TextPrinter.h"

namespace quarv {

class FakeMainWindow : public MainWindow {
  public:
    void DoView(const QString& connStr) override {
        opened.append(connStr);
        if (error) throw DataError(*error);
    }

    QStringList opened;
    std::optional<DataError> error;
};

inline registry::HivePaths PathsIn(const QTemporaryDir& folder) {
    const QByteArray root = folder.path().toUtf8();
    return {.user = root + "/user.hive",
            .machine = root + "/machine/machine.hive",
            .overlay = root + "/overlay.hive"};
}

class ConnectionDialogFixture : public testing::Test {
  protected:
    static constexpr const char* SettingsKey = "Software\\Kel\\Quarv\\General";

    ConnectionDialogFixture() {
        forms::RegisterMessageHooks();
        script_->AnswerSchema(
            ado::Schema::Catalogs,
            ado::MemoryResult::Rows({"CATALOG_NAME", "DESCRIPTION"}, {{u"master"}, {u"Sales"}}));
    }

    void Store(const char* connectionString) {
        registry_.SetMachineString(SettingsKey, "ConnStr", connectionString);
    }

    QString Stored() { return registry_.GetMachineString(SettingsKey, "ConnStr", "nothing"); }

    void Show() {
        dialog_ = std::make_unique<SQLServerConnectionDetails>(mainWindow_, script_->Factory(),
                                                               registry_);
        dialog_->Show();
    }

    template <typename ControlType>
    ControlType& Get(const char* name) {
        auto* control = dialog_->findChild<ControlType*>(QLatin1String(name));
        if (control == nullptr) throw std::runtime_error(name);
        return *control;
    }

    QString TextOf(const char* name) { return GetByName(&Get<QWidget>(name), "Text").Text(); }
    void SetText(const char* name, const char* text) {
        SetByName(&Get<QWidget>(name), "Text", QString::fromUtf8(text));
    }
    void Press(const char* name) { QTest::mouseClick(&Get<QWidget>(name), Qt::LeftButton); }

    void ChooseSqlAccount(const char* user, const char* password) {
        Get<forms::OptionButton>("UseSQLAccount").SetValue(true);
        SetText("Username", user);
        SetText("Password", password);
    }

    QTemporaryDir folder_;
    registry::Hives hives_{PathsIn(folder_)};
    Registry registry_{hives_};
    std::shared_ptr<ado::MemoryScript> script_ = std::make_shared<ado::MemoryScript>();
    FakeMainWindow mainWindow_;
    std::unique_ptr<SQLServerConnectionDetails> dialog_;
    std::optional<test::BoxWatcher> watch_{std::in_place};
};

}  // namespace quarv
