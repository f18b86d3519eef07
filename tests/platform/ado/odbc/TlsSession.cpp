#include "platform/ado/odbc/TlsSession.h"

#include <algorithm>
#include <cstring>

namespace quarv::test {

namespace {

constexpr int LongestRecord = 16384;  // bytes of what is said ([RFC 5246], "Fragmentation")

void Require(int outcome) {
    if (outcome < 0) qFatal("no TLS: %s", gnutls_strerror(outcome));
}

}  // namespace

TlsSession::TlsSession() {
    MakeCertificate();
    Require(gnutls_certificate_allocate_credentials(&credentials_));
    Require(gnutls_certificate_set_x509_key(credentials_, &certificate_, 1, key_));
    Require(gnutls_init(&session_, GNUTLS_SERVER));
    // Later versions say more after the handshake than its messages have room for.
    Require(gnutls_priority_set_direct(session_, "NORMAL:-VERS-ALL:+VERS-TLS1.2", nullptr));
    Require(gnutls_credentials_set(session_, GNUTLS_CRD_CERTIFICATE, credentials_));
    gnutls_transport_set_ptr(session_, this);
    gnutls_transport_set_push_function(session_, Push);
    gnutls_transport_set_pull_function(session_, Pull);
}

TlsSession::~TlsSession() {
    gnutls_deinit(session_);
    gnutls_certificate_free_credentials(credentials_);
    gnutls_x509_crt_deinit(certificate_);
    gnutls_x509_privkey_deinit(key_);
}

void TlsSession::MakeCertificate() {
    constexpr time_t start = 1577836800, end = 4102444800;  // 2020, 2100
    Require(gnutls_x509_privkey_init(&key_));
    Require(gnutls_x509_privkey_generate(key_, GNUTLS_PK_ECDSA,
                                         GNUTLS_CURVE_TO_BITS(GNUTLS_ECC_CURVE_SECP256R1), 0));
    Require(gnutls_x509_crt_init(&certificate_));
    Require(gnutls_x509_crt_set_version(certificate_, 3));
    Require(gnutls_x509_crt_set_serial(certificate_, "\1", 1));
    Require(gnutls_x509_crt_set_activation_time(certificate_, start));
    Require(gnutls_x509_crt_set_expiration_time(certificate_, end));
    Require(gnutls_x509_crt_set_dn(certificate_, "CN=fake", nullptr));
    Require(gnutls_x509_crt_set_key(certificate_, key_));
    Require(gnutls_x509_crt_sign2(certificate_, certificate_, key_, GNUTLS_DIG_SHA256, 0));
}

void TlsSession::CarryBy(Sender sender, Receiver receiver) {
    sender_ = std::move(sender);
    receiver_ = std::move(receiver);
}

bool TlsSession::Handshake() {
    int outcome = 0;
    do outcome = gnutls_handshake(session_);
    while (outcome < 0 && gnutls_error_is_fatal(outcome) == 0);
    return Flush() && outcome == 0;
}

bool TlsSession::Send(const QByteArray& bytes) {
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t n = gnutls_record_send(session_, bytes.constData() + sent,
                                             static_cast<size_t>(bytes.size() - sent));
        if (n < 0) return false;
        sent += n;
    }
    return Flush();
}

QByteArray TlsSession::ReceiveSome() {
    QByteArray bytes(LongestRecord, 0);
    const ssize_t n = gnutls_record_recv(session_, bytes.data(), LongestRecord);
    bytes.truncate(std::max<ssize_t>(n, 0));
    return bytes;
}

// What is said in one breath is kept until the other side is to answer.
ssize_t TlsSession::Push(gnutls_transport_ptr_t self, const void* bytes, size_t size) {
    static_cast<TlsSession*>(self)->out_.append(static_cast<const char*>(bytes),
                                                static_cast<qsizetype>(size));
    return static_cast<ssize_t>(size);
}

ssize_t TlsSession::Pull(gnutls_transport_ptr_t self, void* bytes, size_t room) {
    auto* session = static_cast<TlsSession*>(self);
    if (!session->Flush()) return 0;
    if (session->in_.isEmpty()) session->in_ = session->receiver_();
    const qsizetype size = std::min(session->in_.size(), static_cast<qsizetype>(room));
    std::memcpy(bytes, session->in_.constData(), static_cast<size_t>(size));
    session->in_.remove(0, size);
    return static_cast<ssize_t>(size);
}

bool TlsSession::Flush() {
    if (out_.isEmpty()) return true;
    return sender_(std::exchange(out_, {}));
}

}  // namespace quarv::test
