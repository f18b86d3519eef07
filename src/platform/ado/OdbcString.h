// OdbcString: composes a connection string for the ODBC driver manager so that every value arrives
// as it is and none can add a keyword. A value that this syntax cannot carry is refused.
#pragma once

#include <QString>
#include <QStringList>

namespace quarv::ado {

class OdbcString {
  public:
    // Raises a DataError that names the keyword where `keyword` is no keyword (letters, digits,
    // blanks, "_" and "-"), or where the value holds "};", a null character or half a surrogate
    // pair: the driver manager knows no way to write these.
    OdbcString& Add(const QString& keyword, const QString& value);
    // As Add, and refuses more than the 128 UTF-16 units that a login carries; the driver would cut
    // the value silently.
    OdbcString& AddLoginValue(const QString& keyword, const QString& value);

    const QString& Text() const { return text_; }
    // Whether `keyword` was added, in any letter case.
    bool Has(const QString& keyword) const;

  private:
    QString text_;
    QStringList keywords_;
};

}  // namespace quarv::ado
