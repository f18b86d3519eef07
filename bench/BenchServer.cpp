#include "BenchServer.h"

#include <QFile>
#include <cstdio>
#include <cstdlib>

namespace quarv::bench {

BenchServer::BenchServer() {
    const QString secret = folder_.filePath(QStringLiteral("password"));
    QFile file(secret);
    if (file.open(QIODevice::WriteOnly)) file.write("bench");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(
        QStringLiteral(LOCALDB_PROGRAM),
        {QStringLiteral("serve"), QStringLiteral("--data"),
         folder_.filePath(QStringLiteral("data")), QStringLiteral("--listen"),
         QStringLiteral("127.0.0.1:0"), QStringLiteral("--login"), QStringLiteral("bench"),
         QStringLiteral("--password-file"), secret, QStringLiteral("--sample")});
    QByteArray line;
    while (!line.contains('\n') && process_.waitForReadyRead(30000)) line += process_.readLine();
    port_ = line.mid(line.lastIndexOf(':') + 1).trimmed().toInt();
    if (line.startsWith("listening on ") && port_ > 0) return;
    std::fprintf(stderr, "the bench's server did not come up\n");
    std::exit(2);
}

BenchServer::~BenchServer() {
    process_.terminate();
    if (!process_.waitForFinished(10000)) process_.kill();
    process_.waitForFinished();
}

QString ClientString(int port) {
    return QStringLiteral(
               "Provider=sqloledb;Data Source=127.0.0.1,%1;Initial Catalog=mirel;"
               "User Id=bench;Password=bench;")
        .arg(port);
}

}  // namespace quarv::bench
