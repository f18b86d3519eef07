#include <dlfcn.h>
#include <odbcinst.h>
#include <sql.h>

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <array>

#include "platform/ado/ConnectionSettings.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace quarv::ado::odbc {

namespace {

// The driver's library as the driver manager's list names it: a path, or a bare file name.
QByteArray RegisteredLibrary() {
    std::array<char, 4096> library{};
    const QByteArray driver = ConnectionSettings::SqlServerDriver.toLatin1();
    SQLGetPrivateProfileString(driver.constData(), "Driver", "", library.data(),
                               static_cast<int>(library.size()), "odbcinst.ini");
    return library.data();
}

// Where the driver manager looks for bare names: the folder "odbc" beside its own library.
QByteArray DriverFolder() {
    Dl_info manager{};
    if (dladdr(reinterpret_cast<void*>(&SQLAllocHandle), &manager) == 0) return {};
    const QFileInfo library(QFile::decodeName(manager.dli_fname));
    return QFile::encodeName(library.absolutePath() + QStringLiteral("/odbc/"));
}

}  // namespace

void LoadDriver() {
    QByteArray library = RegisteredLibrary();
    if (library.isEmpty()) return;
    if (!library.contains('/')) library.prepend(DriverFolder());
    // Never closed: the driver manager finds it loaded when it opens it.
    static_cast<void>(dlopen(library.constData(), RTLD_LAZY | RTLD_LOCAL));
}

}  // namespace quarv::ado::odbc
