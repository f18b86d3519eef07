// TicketVerifier: reads the Kerberos tokens that logins of Windows accounts carry, as a server does
// that holds the keys of its service. Handed to a FakeServer; it knows nothing of TDS.
#pragma once

#include <optional>

#include "platform/ado/odbc/FakeServer.h"

namespace quarv::test {

class TicketVerifier {
  public:
    // `keytab` is the path of the file with the service's keys.
    explicit TicketVerifier(QString keytab) : keytab_(std::move(keytab)) {}

    // Whose ticket `token` holds; nothing where it is none for this service.
    std::optional<FakeServer::Proof> operator()(const QByteArray& token) const;

  private:
    QString keytab_;
};

}  // namespace quarv::test
