#include <QTimer>

#include "app/QuarvBAS.h"
#include "app/WarmUp.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/forms/Application.h"
#include "platform/registry/Hives.h"

namespace {

// Late enough for the dialog to be painted, and sooner than anybody confirms it.
constexpr int WarmUpAfter = 100;  // milliseconds

}  // namespace

int main(int argc, char** argv) {
    quarv::forms::Application application(argc, argv);
    quarv::registry::Hives hives(quarv::registry::HivePaths::FromEnvironment());
    quarv::Registry registry(hives);
    QTimer::singleShot(WarmUpAfter, &quarv::WarmUp);
    return quarv::QuarvBAS(quarv::ado::odbc::OdbcConnectionFactory(), registry).Run();
}
