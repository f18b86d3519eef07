// ConnectionInfo: the parts of an OLE DB or ODBC connection string, the kind of data source that
// they address, and the string rebuilt from them. It opens nothing and knows no driver.
#pragma once

#include <QString>

#include "base/Object.h"
#include "base/RNamedList.h"

namespace quarv {

class ConnectionInfo : public Object {
  public:
    enum Type : qint32 {
        None = 0,
        Jet = 1,
        SqlServer = 2,
        Csv = 3,
        MySql = 4,
        Oracle = 5,
        OtherOdbc = 6,
    };

    void Setup(const QString& source, const QString& user, const QString& pwd, qint32 conType);

    // The string rebuilt from the parts.
    QString ConnectionString() const;
    // Parses the text into the parts. Parts that it does not mention keep their values, extra
    // parameters are appended. Raises Overflow for extra parameter 32758.
    void SetConnectionString(const QString& text);

    // One of Type, or any number that was written. Writing it also rewrites the provider or the
    // driver to the name that goes with the type.
    qint32 ConnectionType() const { return type_; }
    void SetConnectionType(qint32 type);

    // One line for captions.
    QString Description() const;
    // The extra parameter of that name, in any letter case; otherwise `defaultText`.
    QString GetExtraParam(const QString& name, const QString& defaultText) const;
    // A new model that parsed this model's rebuilt string.
    ConnectionInfo Clone() const;
    // Whether `src` (nothing and other objects included) is a model of the same database. Driver,
    // user and password do not count.
    bool IsSameDb(const Object* src) const;

    // Server name or file path.
    const QString& Source() const { return source_; }
    void SetSource(const QString& source) { source_ = source; }
    const QString& User() const { return user_; }
    void SetUser(const QString& user) { user_ = user; }
    const QString& Password() const { return password_; }
    void SetPassword(const QString& password) { password_ = password; }
    // OLE DB provider name.
    const QString& Provider() const { return provider_; }
    void SetProvider(const QString& provider) { provider_ = provider; }
    // ODBC driver name, without braces.
    const QString& Driver() const { return driver_; }
    void SetDriver(const QString& driver) { driver_ = driver; }
    // Every other key with its value, in order of appearance.
    RNamedList& ExtraParams() { return extraParams_; }
    const RNamedList& ExtraParams() const { return extraParams_; }

  private:
    void Take(const QString& key, const QString& value, const QString& wholeText);
    void TakeProvider(const QString& provider, const QString& wholeText);
    void TakeDriver(const QString& driver);
    bool HasSameParam(const ConnectionInfo& other, const QString& name) const;

    QString source_;
    QString user_;
    QString password_;
    QString provider_;
    QString driver_;
    RNamedList extraParams_;
    qint32 type_ = None;
};

}  // namespace quarv
