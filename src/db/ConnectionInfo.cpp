#include "db/ConnectionInfo.h"

#include <array>

#include "base/RUtils.h"
#include "db/CharacterStream.h"

namespace quarv {

namespace {

const QString ValueStart = QStringLiteral("{\"'");
const QString ValueEnd = QStringLiteral("}\";'");
const QString JetMark = QStringLiteral("Extended Properties=\"text;");

bool Holds(const QString& text, QStringView part) {
    return text.contains(part, Qt::CaseInsensitive);
}

bool IsOneOf(const QString& key, std::initializer_list<QStringView> names) {
    for (QStringView name : names) {
        if (SameText(key, name)) return true;
    }
    return false;
}

QString Pair(QStringView key, const QString& value) {
    return key.toString() + u'=' + value + u';';
}

}  // namespace

void ConnectionInfo::Setup(const QString& source, const QString& user, const QString& pwd,
                           qint32 conType) {
    source_ = source;
    user_ = user;
    password_ = pwd;
    SetConnectionType(conType);
}

QString ConnectionInfo::ConnectionString() const {
    QString text;
    if (!provider_.isEmpty()) text = Pair(u"Provider", provider_);
    // A driver takes the provider's place; a string that names both is not made.
    if (!driver_.isEmpty()) text = Pair(u"Driver", u'{' + driver_ + u'}');
    if (!source_.isEmpty()) text += Pair(u"Data Source", source_);
    for (qint16 i = 1; i <= extraParams_.Count(); ++i) {
        const QString value = extraParams_.Values(i).ToText();
        text +=
            Pair(extraParams_.Keys(i).Text(), value.contains(u';') ? u'"' + value + u'"' : value);
    }
    if (user_.isEmpty()) return text;
    text += Pair(driver_.isEmpty() ? u"User Id" : u"User", user_);
    return text + Pair(u"Password", password_);
}

void ConnectionInfo::SetConnectionString(const QString& text) {
    CharacterStream stream;
    stream.SetTextData(text);
    while (true) {
        const QString key = stream.GetNextString(QString(), QStringLiteral("="));
        if (key.isEmpty()) return;
        const QString value = stream.GetNextString(ValueStart, ValueEnd);
        if (stream.PeekChar() == u';') stream.NextChar();
        Take(key, value, text);
    }
}

void ConnectionInfo::Take(const QString& key, const QString& value, const QString& wholeText) {
    if (SameText(key, u"provider")) {
        TakeProvider(value, wholeText);
    } else if (SameText(key, u"driver")) {
        TakeDriver(value);
    } else if (IsOneOf(key, {u"user id", u"uid", u"user"})) {
        user_ = value;
    } else if (IsOneOf(key, {u"password", u"pwd"})) {
        password_ = value;
    } else if (SameText(key, u"data source")) {
        source_ = value;
    } else {
        extraParams_.Add(key, value);
    }
}

void ConnectionInfo::TakeProvider(const QString& provider, const QString& wholeText) {
    provider_ = provider;
    if (Holds(provider, u"Microsoft.Jet.OLEDB")) {
        SetConnectionType(Holds(wholeText, JetMark) ? Csv : Jet);
    } else if (Holds(provider, u"sqloledb")) {
        SetConnectionType(SqlServer);
    } else if (Holds(provider, u"MySQLProv")) {
        SetConnectionType(MySql);
    } else if (Holds(provider, u"msdaora")) {
        SetConnectionType(Oracle);
    }
}

void ConnectionInfo::TakeDriver(const QString& driver) {
    driver_ = driver;
    if (Holds(driver, u"mysql odbc")) {
        SetConnectionType(MySql);
    } else if (Holds(driver, u"odbc")) {
        SetConnectionType(OtherOdbc);
    }
}

void ConnectionInfo::SetConnectionType(qint32 type) {
    type_ = type;
    // One name for each kind, whatever version the string named.
    switch (type) {
        case None:
        case Jet:
        case Csv:
            provider_ = QStringLiteral("Microsoft.Jet.OLEDB.4.0");
            break;
        case SqlServer:
            provider_ = QStringLiteral("sqloledb");
            break;
        case MySql:
            driver_ = QStringLiteral("MySQL ODBC 3.51 Driver");
            provider_.clear();
            break;
        case Oracle:
            provider_ = QStringLiteral("MSDAORA.1");
            break;
        default:
            break;
    }
}

QString ConnectionInfo::Description() const {
    switch (type_) {
        case None:
        case Jet:
            return source_;
        case SqlServer:
            return TrimBlanks(QStringLiteral("SQL Server ") + source_ + u' ' +
                              GetExtraParam(QStringLiteral("Initial Catalog"), QString()));
        case Csv:
            return QStringLiteral("CSV");
        case MySql:
            return QStringLiteral("MySQL ") + source_;
        case Oracle:
            return QStringLiteral("Oracle ") + source_;
        default:
            return provider_ + u' ' + source_;
    }
}

QString ConnectionInfo::GetExtraParam(const QString& name, const QString& defaultText) const {
    if (!extraParams_.IsPresent(name)) return defaultText;
    return extraParams_.ValueByKey(name).ToText();
}

ConnectionInfo ConnectionInfo::Clone() const {
    ConnectionInfo copy;
    copy.SetConnectionString(ConnectionString());
    return copy;
}

bool ConnectionInfo::IsSameDb(const Object* src) const {
    const auto* other = dynamic_cast<const ConnectionInfo*>(src);
    if (other == nullptr) return false;
    if (!SameText(other->provider_, provider_) || !SameText(other->source_, source_)) return false;
    switch (type_) {
        case SqlServer:
            return HasSameParam(*other, QStringLiteral("Initial Catalog"));
        case MySql:
            return HasSameParam(*other, QStringLiteral("Database"));
        default:
            return true;
    }
}

bool ConnectionInfo::HasSameParam(const ConnectionInfo& other, const QString& name) const {
    // The defaults differ on purpose: two models that both lack the name are not the same database.
    return SameText(GetExtraParam(name, QStringLiteral("x")),
                    other.GetExtraParam(name, QStringLiteral("y")));
}

}  // namespace quarv
