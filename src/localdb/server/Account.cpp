#include "localdb/server/Account.h"

#include <QCryptographicHash>
#include <utility>

namespace quarv::localdb::server {

namespace {

QByteArray DigestOf(const QString& password) {
    return QCryptographicHash::hash(password.toUtf8(), QCryptographicHash::Sha256);
}

}  // namespace

Account::Account(QString name, const QString& password)
    : name_(std::move(name)), digest_(DigestOf(password)) {}

bool Account::Admits(const QString& name, const QString& password) const {
    const QByteArray given = DigestOf(password);
    // Every byte is looked at, so that the time tells nothing about the place of a difference.
    unsigned difference = given.size() == digest_.size() ? 0 : 1;
    for (qsizetype i = 0; i < given.size() && i < digest_.size(); ++i) {
        difference |= static_cast<unsigned char>(given[i]) ^ static_cast<unsigned char>(digest_[i]);
    }
    const bool known = !name_.isEmpty() && name.compare(name_, Qt::CaseInsensitive) == 0;
    return (difference == 0) & known;
}

}  // namespace quarv::localdb::server
