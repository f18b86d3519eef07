#include "platform/ado/odbc/EmbeddedServer.h"

#include <QFile>

#include "support/EndWithUs.h"

namespace quarv::test {

namespace {

constexpr int Patience = 30000;  // milliseconds

}  // namespace

EmbeddedServer::EmbeddedServer() {
    const QString passwordFile = home_.path() + QStringLiteral("/password");
    QFile file(passwordFile);
    if (!file.open(QIODevice::WriteOnly)) qFatal("no folder for the local server");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write("test secret\n");
    file.close();
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    EndWithUs(process_);
    process_.start(
        QStringLiteral(QUARV_LOCALDB_PROGRAM),
        {QStringLiteral("serve"), QStringLiteral("--data"), home_.path() + QStringLiteral("/data"),
         QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--login"),
         QStringLiteral("sa"), QStringLiteral("--password-file"), passwordFile});
    while (!process_.canReadLine())
        if (!process_.waitForReadyRead(Patience)) qFatal("the local server did not come up");
    const QString line = QString::fromUtf8(process_.readLine()).trimmed();
    port_ = line.section(u':', -1).toInt();
}

EmbeddedServer::~EmbeddedServer() {
    process_.terminate();
    if (!process_.waitForFinished(Patience)) process_.kill();
    process_.waitForFinished(Patience);
}

QString EmbeddedServer::ConnectionStringTo(int port) {
    return QStringLiteral(
               "Provider=sqloledb;Data Source=127.0.0.1,%1;User Id=sa;"
               "Password=test secret;")
        .arg(port);
}

}  // namespace quarv::test
