// Runs a client program against a server of a test and gives back what it printed.
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>

namespace quarv::localdb::server {

// Where a server listens and who may log in.
struct Target {
    uint16_t port = 0;
    QString user = QStringLiteral("tester");
    QString password = QStringLiteral("right");
    QString database = QStringLiteral("mirel");
    QString version = QStringLiteral("7.4");  // of the protocol
    int timeout = 0;                          // of a statement, in seconds; 0: none. isql's only
};

struct Output {
    int status = -1;
    std::string text;  // stdout and stderr
};

inline bool HasProgram(const char* program) {
    return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
}

inline Output RunClient(const QString& program, const QString& version,
                        const QStringList& arguments, const QByteArray& input) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TDSVER"), version);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(30'000)) << program.toStdString() << " does not end";
    return {process.exitCode(), process.readAll().toStdString()};
}

inline Output RunTsql(const Target& target, const QByteArray& input) {
    return RunClient(QStringLiteral("tsql"), target.version,
                     {QStringLiteral("-H"), QStringLiteral("127.0.0.1"), QStringLiteral("-p"),
                      QString::number(target.port), QStringLiteral("-U"), target.user,
                      QStringLiteral("-P"), target.password, QStringLiteral("-D"), target.database},
                     input);
}

inline Output RunIsql(const Target& target, const QByteArray& input) {
    const QString connection =
        QStringLiteral(
            "Driver=FreeTDS;Server=127.0.0.1;Port=%1;TDS_Version=%5;UID=%2;PWD=%3;Database=%4;"
            "Timeout=%6")
            .arg(QString::number(target.port), target.user, target.password, target.database,
                 target.version, QString::number(target.timeout));
    return RunClient(QStringLiteral("isql"), target.version,
                     {QStringLiteral("-k"), connection, QStringLiteral("-b"), QStringLiteral("-v"),
                      QStringLiteral("-d,")},
                     input);
}

inline Output RunBsqldb(const Target& target, const QByteArray& input) {
    return RunClient(QStringLiteral("bsqldb"), target.version,
                     {QStringLiteral("-S"), QStringLiteral("127.0.0.1:%1").arg(target.port),
                      QStringLiteral("-U"), target.user, QStringLiteral("-P"), target.password,
                      QStringLiteral("-D"), target.database},
                     input);
}

}  // namespace quarv::localdb::server
