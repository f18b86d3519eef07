#include "platform/ado/odbc/KerberosRealm.h"

#include <signal.h>
#include <unistd.h>

#include <QDateTime>
#include <QDeadlineTimer>
#include <QFile>
#include <QStandardPaths>
#include <QThread>
#include <stdexcept>

#include "platform/ado/odbc/Loopback.h"
#include "support/EndWithUs.h"

namespace quarv::test {

namespace {

constexpr int Patience = 30000;  // milliseconds
const char* const Realm = "QUARV.TEST";
const char* const User = "alice@QUARV.TEST";
const char* const Password = "wonderland";

[[noreturn]] void Fail(const QString& what) {
    throw std::runtime_error(what.toStdString());
}

// The path of one of Kerberos' programs; those of servers lie outside a user's own paths.
QString Program(const QString& name) {
    QString path = QStandardPaths::findExecutable(name);
    if (path.isEmpty())
        path = QStandardPaths::findExecutable(
            name, {QStringLiteral("/usr/sbin"), QStringLiteral("/usr/bin")});
    if (path.isEmpty()) Fail(name + QStringLiteral(" is not installed: run scripts/setup"));
    return path;
}

struct Outcome {
    int status;
    QString output;
};

Outcome Run(const QString& program, const QStringList& arguments, const QByteArray& input = {}) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    EndWithUs(process);
    process.start(Program(program), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(Patience) || process.exitStatus() != QProcess::NormalExit)
        Fail(program + QStringLiteral(" did not end: ") + process.errorString());
    return {process.exitCode(), QString::fromUtf8(process.readAll())};
}

void RunWell(const QString& program, const QStringList& arguments, const QByteArray& input = {}) {
    const Outcome outcome = Run(program, arguments, input);
    if (outcome.status != 0) Fail(program + QStringLiteral(" failed: ") + outcome.output);
}

void WriteFile(const QString& path, const QString& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        Fail(QStringLiteral("cannot write ") + path);
}

// The name under which the driver asks for a server's ticket.
QString Service(int port) {
    return QStringLiteral("MSSQLSvc/127.0.0.1:%1").arg(port);
}

int FreePort() {
    int port = 0;
    close(ListenOnLoopback(port));
    return port;
}

// No name is looked up and no datagram is sent: what is not here fails at once.
const char* const ClientSettings = R"([libdefaults]
    default_realm = %1
    dns_lookup_realm = false
    dns_lookup_kdc = false
    dns_uri_lookup = false
    dns_canonicalize_hostname = false
    rdns = false
    udp_preference_limit = 1
[realms]
    QUARV.TEST = {
        kdc = 127.0.0.1:%2
    }
[logging]
    default = FILE:%3/log
)";

const char* const KeyServerSettings = R"([realms]
    QUARV.TEST = {
        database_name = %2/principals
        key_stash_file = %2/stash
        kdc_listen = ""
        kdc_tcp_listen = 127.0.0.1:%1
    }
[logging]
    kdc = FILE:%2/log
)";

}  // namespace

KerberosRealm::KerberosRealm() {
    SetEnvironment();
    WriteSettings(0, QString::fromLatin1(Realm));
    Create();
    StartKeyServer();
}

KerberosRealm::~KerberosRealm() {
    StopKeyServer();
}

void KerberosRealm::Environment::Set(const char* name, const QString& value) {
    before_.try_emplace(name, qgetenv(name));
    qputenv(name, value.toUtf8());
}

KerberosRealm::Environment::~Environment() {
    for (const auto& [name, value] : before_) {
        if (value.isNull())
            qunsetenv(name.constData());
        else
            qputenv(name.constData(), value);
    }
}

void KerberosRealm::SetEnvironment() {
    const std::pair<const char*, QString> variables[] = {
        {"KRB5_CONFIG", Path(QStringLiteral("client.conf"))},
        {"KRB5_KDC_PROFILE", Path(QStringLiteral("server.conf"))},
        {"KRB5CCNAME", QStringLiteral("FILE:") + Path(QStringLiteral("tickets"))},
        // Whoever runs the tests may hold keys of their own, which would do for a ticket.
        {"KRB5_CLIENT_KTNAME", QStringLiteral("FILE:") + Path(QStringLiteral("none"))},
    };
    for (const auto& [name, value] : variables) environment_.Set(name, value);
}

void KerberosRealm::WriteSettings(int port, const QString& realmOfServers) {
    port_ = port;
    WriteFile(Path(QStringLiteral("client.conf")),
              QString::fromLatin1(ClientSettings).arg(realmOfServers).arg(port).arg(home_.path()));
    WriteFile(Path(QStringLiteral("server.conf")),
              QString::fromLatin1(KeyServerSettings).arg(port).arg(home_.path()));
}

void KerberosRealm::Create() {
    RunWell(QStringLiteral("kdb5_util"), {QStringLiteral("create"), QStringLiteral("-s"),
                                          QStringLiteral("-P"), QStringLiteral("master")});
    Administer({QStringLiteral("addprinc"), QStringLiteral("-pw"), QString::fromLatin1(Password),
                QString::fromLatin1(User)});
}

void KerberosRealm::Administer(const QStringList& command) {
    RunWell(QStringLiteral("kadmin.local"),
            QStringList{QStringLiteral("-p"), QStringLiteral("admin")} + command);
}

// The port was free a moment ago; where another program took it since, another one is tried.
void KerberosRealm::StartKeyServer() {
    const QString program = Program(QStringLiteral("krb5kdc"));
    keyServer_.setProcessChannelMode(QProcess::MergedChannels);
    EndWithUs(keyServer_);
    for (int tries = 0; tries < 5; ++tries) {
        WriteSettings(FreePort(), QString::fromLatin1(Realm));
        keyServer_.start(program, {QStringLiteral("-n")});
        if (KeyServerListens()) return;
        StopKeyServer();
    }
    Fail(QStringLiteral("krb5kdc did not come up"));
}

// It says that it starts when its port is open.
bool KerberosRealm::KeyServerListens() {
    QByteArray said;
    while (!said.contains("starting...")) {
        if (!keyServer_.waitForReadyRead(Patience)) return false;
        said += keyServer_.readAll();
    }
    return true;
}

void KerberosRealm::AddService(int port) {
    Administer({QStringLiteral("addprinc"), QStringLiteral("-randkey"), Service(port)});
    Administer({QStringLiteral("ktadd"), QStringLiteral("-k"), QStringLiteral("FILE:") + Keytab(),
                Service(port)});
}

void KerberosRealm::ChangeServiceKey(int port) {
    Administer({QStringLiteral("cpw"), QStringLiteral("-randkey"), Service(port)});
}

void KerberosRealm::GiveTicket(int seconds) {
    RunWell(QStringLiteral("kinit"),
            {QStringLiteral("-l"), QStringLiteral("%1s").arg(seconds), QString::fromLatin1(User)},
            QByteArray(Password) + '\n');
}

void KerberosRealm::AwaitExpiry() {
    const QDeadlineTimer deadline(Patience);
    while (Run(QStringLiteral("klist"), {QStringLiteral("-s")}).status == 0) {
        if (deadline.hasExpired()) Fail(QStringLiteral("the ticket stays valid"));
        QThread::msleep(20);
    }
    // For klist a ticket's last second is over when it begins, for others when it ends.
    const qint64 last = QDateTime::currentSecsSinceEpoch();
    while (QDateTime::currentSecsSinceEpoch() <= last) QThread::msleep(20);
}

void KerberosRealm::MoveServersAway() {
    WriteSettings(port_, QStringLiteral("ELSEWHERE.TEST"));
}

void KerberosRealm::StopKeyServer() {
    keyServer_.kill();
    keyServer_.waitForFinished(Patience);
}

void KerberosRealm::SilenceKeyServer() {
    kill(static_cast<pid_t>(keyServer_.processId()), SIGSTOP);
}

}  // namespace quarv::test
