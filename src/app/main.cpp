#include "app/QuarvBAS.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/forms/Application.h"
#include "platform/registry/Hives.h"

int main(int argc, char** argv) {
    quarv::forms::Application application(argc, argv);
    quarv::registry::Hives hives(quarv::registry::HivePaths::FromEnvironment());
    quarv::Registry registry(hives);
    return quarv::QuarvBAS(quarv::ado::odbc::OdbcConnectionFactory(), registry).Run();
}
