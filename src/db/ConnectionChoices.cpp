#include "db/ConnectionChoices.h"

#include "base/RUtils.h"
#include "db/ConnectionInfo.h"

namespace quarv {
namespace {

const QString CatalogParam = QStringLiteral("Initial Catalog");
const QString SecurityParam = QStringLiteral("Integrated Security");
constexpr int SqlServerType = 2;

}  // namespace

ConnectionChoices ConnectionChoices::From(ConnectionInfo& model) {
    ConnectionChoices choices;
    choices.server = model.Source();
    choices.useWinAccount =
        SameText(model.GetExtraParam(SecurityParam, QString()), QStringLiteral("sspi"));
    choices.useSQLAccount = !model.User().isEmpty();
    choices.user = model.User();
    choices.password = model.Password();
    choices.database = model.GetExtraParam(CatalogParam, QStringLiteral("mirel"));
    return choices;
}

std::optional<ConnectionChoices::Complaint> ConnectionChoices::FindMissing() const {
    if (server.isEmpty()) {
        return Complaint{QStringLiteral("You must provide the name of the SQL Server."),
                         QStringLiteral("Server name")};
    }
    if (useSQLAccount && user.isEmpty()) {
        return Complaint{QStringLiteral("You must provide the name and password of an account on "
                                        "the SQL Server."),
                         QStringLiteral("Username")};
    }
    return {};
}

std::optional<ConnectionChoices::Complaint> ConnectionChoices::FindMissingDatabase() const {
    if (!database.isEmpty()) return {};
    return Complaint{QStringLiteral("You must provide the name of a database within the SQL Server "
                                    "you have chosen."),
                     QStringLiteral("Database name")};
}

void ConnectionChoices::BuildInto(ConnectionInfo& model) const {
    model.ExtraParams().Clear();
    model.SetConnectionType(SqlServerType);
    model.SetSource(server);
    if (!database.isEmpty()) model.ExtraParams().Add(CatalogParam, database);
    if (useSQLAccount) {
        model.SetUser(user);
        model.SetPassword(password);
    }
    if (useWinAccount) model.ExtraParams().Add(SecurityParam, QStringLiteral("SSPI"));
}

}  // namespace quarv
