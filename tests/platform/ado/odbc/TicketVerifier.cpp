#include "platform/ado/odbc/TicketVerifier.h"

#include <gssapi/gssapi.h>
#include <gssapi/gssapi_ext.h>

#include <array>

namespace quarv::test {

namespace {

// A call's outcome and what it made, released together.
struct Acceptance {
    Acceptance() = default;
    ~Acceptance() {
        OM_uint32 minor = 0;
        gss_release_buffer(&minor, &answer);
        gss_release_buffer(&minor, &name);
        gss_release_name(&minor, &client);
        gss_delete_sec_context(&minor, &context, GSS_C_NO_BUFFER);
        gss_release_cred(&minor, &keys);
    }
    Acceptance(const Acceptance&) = delete;
    Acceptance& operator=(const Acceptance&) = delete;

    gss_cred_id_t keys = GSS_C_NO_CREDENTIAL;
    gss_ctx_id_t context = GSS_C_NO_CONTEXT;
    gss_name_t client = GSS_C_NO_NAME;
    gss_buffer_desc answer = GSS_C_EMPTY_BUFFER;
    gss_buffer_desc name = GSS_C_EMPTY_BUFFER;
};

QByteArray BytesOf(const gss_buffer_desc& buffer) {
    return QByteArray(static_cast<const char*>(buffer.value),
                      static_cast<qsizetype>(buffer.length));
}

bool LoadKeys(Acceptance& acceptance, const QByteArray& keytab) {
    // Nobody replays a token to a test, and a list of those seen would outlive it.
    std::array elements{gss_key_value_element_desc{"keytab", keytab.constData()},
                        gss_key_value_element_desc{"rcache", "none:"}};
    const gss_key_value_set_desc store{elements.size(), elements.data()};
    OM_uint32 minor = 0;
    return gss_acquire_cred_from(&minor, GSS_C_NO_NAME, GSS_C_INDEFINITE, GSS_C_NO_OID_SET,
                                 GSS_C_ACCEPT, &store, &acceptance.keys, nullptr,
                                 nullptr) == GSS_S_COMPLETE;
}

}  // namespace

std::optional<FakeServer::Proof> TicketVerifier::operator()(const QByteArray& token) const {
    Acceptance acceptance;
    if (!LoadKeys(acceptance, "FILE:" + keytab_.toUtf8())) return std::nullopt;
    QByteArray bytes = token;
    gss_buffer_desc input{static_cast<std::size_t>(bytes.size()), bytes.data()};
    OM_uint32 minor = 0;
    const OM_uint32 accepted = gss_accept_sec_context(
        &minor, &acceptance.context, acceptance.keys, &input, GSS_C_NO_CHANNEL_BINDINGS,
        &acceptance.client, nullptr, &acceptance.answer, nullptr, nullptr, nullptr);
    if (accepted != GSS_S_COMPLETE) return std::nullopt;
    if (gss_display_name(&minor, acceptance.client, &acceptance.name, nullptr) != GSS_S_COMPLETE)
        return std::nullopt;
    return FakeServer::Proof{QString::fromUtf8(BytesOf(acceptance.name)),
                             BytesOf(acceptance.answer)};
}

}  // namespace quarv::test
