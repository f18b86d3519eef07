#include "app/QuarvBAS.h"

#include "app/DatabaseView.h"
#include "base/Hooks.h"
#include "db/SQLServerConnectionDetails.h"
#include "platform/forms/Application.h"
#include "platform/forms/MessageHooks.h"
#include "platform/forms/MsgBox.h"

namespace quarv {

QuarvBAS::QuarvBAS(ado::ConnectionFactory newConnection, Registry& registry)
    : newConnection_(std::move(newConnection)), registry_(registry) {
    SetHooks();
}

void QuarvBAS::SetHooks() {
    forms::RegisterMessageHooks();
    ProgramHooks().mainWindow = [this]() -> QObject* { return mainWindow_.get(); };
    ProgramHooks().centreForm = [this](QObject& form, QObject*& mainWindow) {
        monitors_.CenterFormOnMonitor(form, mainWindow);
    };
}

QuarvBAS::~QuarvBAS() {
    ProgramHooks() = Hooks();
}

int QuarvBAS::Run() {
    dialog_ = std::make_unique<SQLServerConnectionDetails>(*this, newConnection_, registry_);
    dialog_->Show();
    const int status = QCoreApplication::exec();
    return status_ != 0 ? status_ : status;
}

void QuarvBAS::DoView(const QString& connStr) {
    try {
        mainWindow_ = std::make_unique<DatabaseView>(newConnection_, registry_);
        mainWindow_->DoView(connStr);
    } catch (const Error& e) {
        EndAfter(e.Description());
        throw;
    } catch (const std::exception& e) {
        EndAfter(QString::fromUtf8(e.what()));
        throw;
    }
}

void QuarvBAS::EndAfter(const QString& description) {
    status_ = 1;
    forms::MsgBox(description, forms::Application::Title(), forms::BoxIcon::Critical);
    QApplication::closeAllWindows();
    QCoreApplication::exit(status_);
}

}  // namespace quarv
