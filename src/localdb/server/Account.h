// Account: the one SQL login that a server knows. Holds a digest, not the password.
#pragma once

#include <QByteArray>
#include <QString>

namespace quarv::localdb::server {

class Account {
  public:
    Account() = default;
    Account(QString name, const QString& password);

    const QString& Name() const { return name_; }
    // The name in any letter case, the password exactly. Takes the same time wherever the password
    // differs and whether the name fits or not.
    bool Admits(const QString& name, const QString& password) const;

  private:
    QString name_;
    QByteArray digest_;
};

}  // namespace quarv::localdb::server
