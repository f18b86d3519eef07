// KerberosRealm: a Kerberos realm of a test's own with one user, alice@QUARV.TEST. Its key server
// is a program on a free loopback port, its files lie in a temporary folder, and while the object
// lives the process's environment leads there; this computer's own Kerberos is neither read nor
// changed.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <map>

namespace quarv::test {

class KerberosRealm {
  public:
    // Every member that runs a program raises std::runtime_error where it is missing or fails.
    KerberosRealm();
    ~KerberosRealm();
    KerberosRealm(const KerberosRealm&) = delete;
    KerberosRealm& operator=(const KerberosRealm&) = delete;

    // The keys of the services.
    QString Keytab() const { return Path(QStringLiteral("keytab")); }
    // Makes the service of a SQL Server on a loopback port known.
    void AddService(int port);
    // Gives that service a new key, which the keytab does not hold.
    void ChangeServiceKey(int port);
    // A ticket for the user, as kinit gets one.
    void GiveTicket(int seconds = 3600);
    // Returns when the ticket is no longer valid.
    void AwaitExpiry();
    // Servers are taken for those of another realm, which nobody knows.
    void MoveServersAway();
    // From now on nothing listens where the key server was.
    void StopKeyServer();
    // From now on the key server takes connections and never answers.
    void SilenceKeyServer();

  private:
    // Gives the variables back what they held.
    class Environment {
      public:
        Environment() = default;
        ~Environment();
        Environment(const Environment&) = delete;
        Environment& operator=(const Environment&) = delete;
        void Set(const char* name, const QString& value);

      private:
        std::map<QByteArray, QByteArray> before_;  // null where it held nothing
    };

    QString Path(const QString& name) const { return home_.filePath(name); }
    void SetEnvironment();
    void WriteSettings(int port, const QString& realmOfServers);
    void Create();
    static void Administer(const QStringList& command);
    void StartKeyServer();
    bool KeyServerListens();

    QTemporaryDir home_;
    Environment environment_;
    QProcess keyServer_;
    int port_ = 0;
};

}  // namespace quarv::test
