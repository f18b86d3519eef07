#include "db/SQLServerConnection.h"

#include <utility>

namespace quarv {

SQLServerConnection::SQLServerConnection(ado::ConnectionFactory factory)
    : factory_(std::move(factory)) {}

bool SQLServerConnection::InitOpen(const QString& ConnStr) {
    info_.SetConnectionString(ConnStr);
    connection_ = factory_();
    connection_->SetConnectionString(ConnStr);
    connection_->Open();
    return true;
}

ado::ConnectionPtr SQLServerConnection::ADOConn() {
    if (connection_ == nullptr) connection_ = factory_();
    return connection_;
}

ado::RecordsetPtr SQLServerConnection::GetTableList() {
    return ADOConn()->OpenSchema(ado::Schema::Tables);
}

ado::RecordsetPtr SQLServerConnection::GetSprocList() {
    return ADOConn()->OpenSchema(ado::Schema::Procedures);
}

ado::RecordsetPtr SQLServerConnection::OpenQuery(const QString& SQL) {
    return ADOConn()->Execute(SQL);
}

// The blank behind "routine_name=" and its absence behind "table_name=" are on purpose.
ado::RecordsetPtr SQLServerConnection::GetTableInfo(const QString& Tbl) {
    return OpenQuery(QStringLiteral("select * from information_schema.columns where table_name=") +
                     SQLString(Tbl) + QStringLiteral(" order by ordinal_position"));
}

ado::RecordsetPtr SQLServerConnection::GetIndexInfo(const QString& Tbl) {
    return OpenQuery(QStringLiteral("sp_helpindex ") + SQLString(Tbl));
}

ado::RecordsetPtr SQLServerConnection::GetSprocInfo(const QString& Sproc) {
    return OpenQuery(
        QStringLiteral("select * from information_schema.routines where routine_name= ") +
        SQLString(Sproc));
}

ado::RecordsetPtr SQLServerConnection::GetObjectInfo(const QString& Sproc) {
    return OpenQuery(QStringLiteral("sp_help ") + SQLString(Sproc));
}

ado::CatalogPtr SQLServerConnection::GetCatalog() {
    const auto catalog = std::make_shared<ado::Catalog>();
    catalog->SetActiveConnection(ADOConn());
    return catalog;
}

QString SQLServerConnection::o(const QString& ObjectName) {
    // A "]" in the name stays single: the server refuses such a name, and that is accepted.
    return u'[' + ObjectName + u']';
}

QString SQLServerConnection::SQLString(const QString& text) {
    QString doubled = text;
    doubled.replace(u'\'', QStringLiteral("''"));
    return u'\'' + doubled + u'\'';
}

}  // namespace quarv
