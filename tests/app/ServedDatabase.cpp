#include "app/ServedDatabase.h"

#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "support/TextPrinter.h"

namespace quarv::test {

namespace {

const QString Catalog = QStringLiteral("Initial Catalog=shown;");

}  // namespace

std::unique_ptr<EmbeddedServer> ServedDatabase::server;

void ServedDatabase::SetUpTestSuite() {
    server = std::make_unique<EmbeddedServer>();
}

ServedDatabase::ServedDatabase() : direct(ado::odbc::OdbcConnectionFactory()()) {
    direct->Open(server->ConnectionString());
    Run("if db_id('shown') is not null drop database shown");
    Run("create database shown");
    Run("use shown");
}

void ServedDatabase::Run(const QString& sql) {
    direct->Execute(sql);
}

QStringList ServedDatabase::Ask(const QString& sql) {
    QStringList lines;
    const ado::RecordsetPtr rows = direct->Execute(sql);
    for (; !rows->EOF(); rows->MoveNext()) {
        QStringList cells;
        for (int i = 0; i < rows->Fields().Count(); ++i) {
            const Value cell = rows->Fields()[i].Value();
            cells += cell.IsNull() ? QString() : cell.ToText();
        }
        lines += cells.join(u'|');
    }
    return lines;
}

ServedWindow& ServedDatabase::Show(const QStringList& statements, int commandTimeout) {
    for (const QString& each : statements) Run(each);
    served.emplace(EmbeddedServer::ConnectionStringTo(proxy.Port()) + Catalog, commandTimeout);
    openedWith = proxy.Bytes();
    proxy.Forget();
    return *served;
}

}  // namespace quarv::test
