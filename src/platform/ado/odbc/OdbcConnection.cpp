#include "platform/ado/odbc/OdbcConnection.h"

#include <QDeadlineTimer>

#include "base/RuntimeError.h"
#include "platform/ado/ConnectProblems.h"
#include "platform/ado/DataErrors.h"
#include "platform/ado/odbc/ConnectFailure.h"
#include "platform/ado/odbc/InstanceBrowser.h"
#include "platform/ado/odbc/LocalInstance.h"
#include "platform/ado/odbc/OdbcCommand.h"
#include "platform/ado/odbc/OdbcRecordset.h"
#include "platform/ado/odbc/OdbcSession.h"

namespace quarv::ado::odbc {

namespace {

// One opening of a connection: everything it waits for counts against one time limit.
class Opening {
  public:
    Opening(ConnectionSettings settings, int seconds, const QString& localServer)
        : settings_(std::move(settings)),
          seconds_(seconds),
          deadline_(seconds > 0 ? QDeadlineTimer(seconds * qint64{1000})
                                : QDeadlineTimer(QDeadlineTimer::Forever)),
          localServer_(localServer) {}

    std::shared_ptr<OdbcSession> Open() {
        const QString local = settings_.server.localInstance;
        if (local.isEmpty()) {
            FindInstance();
            return Finish(Attempt());
        }
        const LocalInstance instance(local, localServer_);
        UseLocal(instance.Reach(Remaining()));
        ConnectAttempt attempt = Attempt();
        // It may have ended, idle, between the look at its files and the connection.
        if (IsUnreached(attempt) && !instance.IsServed()) {
            UseLocal(instance.Reach(Remaining()));
            attempt = Attempt();
        }
        return Finish(std::move(attempt));
    }

  private:
    // In milliseconds; 0: for ever. A limit that has passed leaves the least wait there is.
    int Remaining() const {
        if (deadline_.isForever()) return 0;
        return static_cast<int>(std::clamp<qint64>(deadline_.remainingTime(), 1, 0x7FFFFFFF));
    }

    ConnectAttempt Attempt() const {
        return Connect(settings_.ForOdbc().Text(), Remaining(), settings_.server.port);
    }

    std::shared_ptr<OdbcSession> Finish(ConnectAttempt attempt) const {
        if (attempt.failure) throw ConnectFailure(attempt, settings_, seconds_);
        return std::make_shared<OdbcSession>(std::move(attempt.environment),
                                             std::move(attempt.connection));
    }

    // The Windows account is proved to a local instance by the secret that only its user can read.
    void UseLocal(const LocalInstance::Access& access) {
        settings_.server.host = access.host;
        settings_.server.port = access.port;
        if (!settings_.integrated && !usesLocalAccount_) return;
        usesLocalAccount_ = true;
        settings_.integrated = false;
        settings_.user = access.user;
        settings_.password = access.secret;
    }

    void FindInstance() {
        ServerAddress& server = settings_.server;
        if (server.instance.isEmpty() || settings_.forDriver) return;
        const int wait = Remaining();
        const BrowserAnswer answer =
            BrowseForPort(server.host, server.instance, wait > 0 ? wait : LongestAsk);
        if (!answer.port)
            throw MakeConnectError(
                answer.hostUnknown ? ConnectProblem::UnknownHost : ConnectProblem::InstanceNotFound,
                {server.host, server.instance});
        server.port = *answer.port;
    }

    static constexpr int LongestAsk = 15000;  // milliseconds

    ConnectionSettings settings_;
    int seconds_;
    QDeadlineTimer deadline_;
    QString localServer_;
    bool usesLocalAccount_ = false;
};

}  // namespace

OdbcConnection::OdbcConnection(QString localServer) : localServer_(std::move(localServer)) {}

OdbcConnection::~OdbcConnection() = default;

void OdbcConnection::SetConnectionString(const QString& text) {
    RequireClosed();
    connectionString_ = text;
}

void OdbcConnection::Open(const QString& connectionString, const QString& user,
                          const QString& password, int) {
    RequireClosed();
    session_.reset();
    if (!connectionString.isEmpty()) connectionString_ = connectionString;
    const ConnectionSettings settings = ConnectionSettings::Read(connectionString_, user, password);
    const int seconds = settings.connectTimeout.value_or(connectionTimeout_);
    session_ = Opening(settings, seconds, localServer_).Open();
}

ObjectState OdbcConnection::State() const {
    return session_ && !session_->IsDead() ? adStateOpen : adStateClosed;
}

void OdbcConnection::Close() {
    RequireOpen();
    session_->Close();
    session_.reset();
}

RecordsetPtr OdbcConnection::Execute(const QString& sql, int) {
    RequireOpen();
    if (sql.isEmpty()) return std::make_shared<OdbcRecordset>(nullptr);
    return std::make_shared<OdbcRecordset>(OdbcCommand::Run(session_, sql, commandTimeout_));
}

RecordsetPtr OdbcConnection::OpenSchema(Schema schema, const TableName& table) {
    RequireOpen();
    return std::make_shared<OdbcRecordset>(
        OdbcCommand::RunSchema(session_, schema, table, commandTimeout_));
}

void OdbcConnection::SetConnectionTimeout(int seconds) {
    if (seconds < 0) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    connectionTimeout_ = seconds;
}

void OdbcConnection::SetCommandTimeout(int seconds) {
    if (seconds < 0) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    commandTimeout_ = seconds;
}

void OdbcConnection::RequireOpen() const {
    if (!session_) throw MakeDataError(DataErrorCode::ObjectClosed);
}

void OdbcConnection::RequireClosed() const {
    if (State() == adStateOpen) throw MakeDataError(DataErrorCode::ObjectOpen);
}

}  // namespace quarv::ado::odbc
