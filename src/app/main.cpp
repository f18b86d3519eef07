#include "app/QuarvBAS.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "platform/forms/Application.h"

int main(int argc, char** argv) {
    quarv::forms::Application application(argc, argv);
    quarv::Registry registry;
    return quarv::QuarvBAS(quarv::ado::odbc::OdbcConnectionFactory(), registry).Run();
}
