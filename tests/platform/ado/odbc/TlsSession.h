// TlsSession: the server's side of TLS over bytes that somebody else carries, with a certificate of
// its own making that nobody vouches for. Owned by a FakeWire; it knows nothing of TDS.
#pragma once

#include <gnutls/gnutls.h>
#include <gnutls/x509.h>

#include <QByteArray>
#include <functional>

namespace quarv::test {

class TlsSession {
  public:
    // Takes everything that one flight holds; false where the other side is gone.
    using Sender = std::function<bool(const QByteArray&)>;
    // Some bytes, at least one; nothing where the other side is gone.
    using Receiver = std::function<QByteArray()>;

    TlsSession();
    ~TlsSession();
    TlsSession(const TlsSession&) = delete;
    TlsSession& operator=(const TlsSession&) = delete;

    void CarryBy(Sender sender, Receiver receiver);
    // False where no encryption is agreed on.
    bool Handshake();
    bool Send(const QByteArray& bytes);
    // At least one byte; nothing where the other side is gone.
    QByteArray ReceiveSome();

  private:
    static ssize_t Push(gnutls_transport_ptr_t self, const void* bytes, size_t size);
    static ssize_t Pull(gnutls_transport_ptr_t self, void* bytes, size_t room);
    bool Flush();
    void MakeCertificate();

    gnutls_session_t session_ = nullptr;
    gnutls_certificate_credentials_t credentials_ = nullptr;
    gnutls_x509_privkey_t key_ = nullptr;
    gnutls_x509_crt_t certificate_ = nullptr;
    Sender sender_;
    Receiver receiver_;
    QByteArray in_;
    QByteArray out_;
};

}  // namespace quarv::test
