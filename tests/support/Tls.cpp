#include "tests/support/Tls.h"

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <stdexcept>
#include <utility>

#include <arpa/inet.h>
#include <gnutls/gnutls.h>
#include <gnutls/x509.h>

namespace test {
namespace {

void Check(int status) {
    if (status < 0) {
        throw std::runtime_error(gnutls_strerror(status));
    }
}

struct Key {
    Key() {
        Check(gnutls_x509_privkey_init(&handle));
        Check(gnutls_x509_privkey_generate(handle, GNUTLS_PK_EC, GNUTLS_CURVE_TO_BITS(GNUTLS_ECC_CURVE_SECP256R1), 0));
    }
    ~Key() { gnutls_x509_privkey_deinit(handle); }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    gnutls_x509_privkey_t handle = nullptr;
};

struct Certificate {
    Certificate() { Check(gnutls_x509_crt_init(&handle)); }
    ~Certificate() { gnutls_x509_crt_deinit(handle); }
    Certificate(const Certificate&) = delete;
    Certificate& operator=(const Certificate&) = delete;
    gnutls_x509_crt_t handle = nullptr;
};

/// Names the host that the certificate is for.
void NameHost(gnutls_x509_crt_t certificate, const std::string& host) {
    in_addr address{};
    if (inet_pton(AF_INET, host.c_str(), &address) == 1) {
        Check(gnutls_x509_crt_set_subject_alt_name(certificate, GNUTLS_SAN_IPADDRESS, &address, sizeof(address), 0));
    } else {
        Check(gnutls_x509_crt_set_subject_alt_name(certificate, GNUTLS_SAN_DNSNAME, host.data(),
                                                   static_cast<unsigned>(host.size()), 0));
    }
}

} // namespace

ServerCertificate::ServerCertificate(const std::string& host) {
    constexpr std::time_t day = 86'400;
    constexpr std::uint8_t serial = 1;
    const Key key;
    const Certificate certificate;
    const std::time_t now = std::time(nullptr);
    Check(gnutls_x509_crt_set_version(certificate.handle, 3));
    Check(gnutls_x509_crt_set_serial(certificate.handle, &serial, sizeof(serial)));
    Check(gnutls_x509_crt_set_activation_time(certificate.handle, now - day));
    Check(gnutls_x509_crt_set_expiration_time(certificate.handle, now + day));
    Check(gnutls_x509_crt_set_dn_by_oid(certificate.handle, GNUTLS_OID_X520_COMMON_NAME, 0, host.data(),
                                        static_cast<unsigned>(host.size())));
    NameHost(certificate.handle, host);
    Check(gnutls_x509_crt_set_ca_status(certificate.handle, 1));
    Check(gnutls_x509_crt_set_key(certificate.handle, key.handle));
    Check(gnutls_x509_crt_sign2(certificate.handle, certificate.handle, key.handle, GNUTLS_DIG_SHA256, 0));
    gnutls_datum_t text{};
    Check(gnutls_x509_crt_export2(certificate.handle, GNUTLS_X509_FMT_PEM, &text));
    pem_.assign(reinterpret_cast<const char*>(text.data), text.size);
    gnutls_free(text.data);

    gnutls_certificate_credentials_t credentials = nullptr;
    Check(gnutls_certificate_allocate_credentials(&credentials));
    credentials_.reset(credentials, gnutls_certificate_free_credentials);
    gnutls_x509_crt_t chain = certificate.handle;
    Check(gnutls_certificate_set_x509_key(credentials, &chain, 1, key.handle));
}

void TlsServerEnd::End::operator()(gnutls_session_int* session) const noexcept { gnutls_deinit(session); }

TlsServerEnd::TlsServerEnd(const ServerCertificate& certificate, Transport transport)
    : transport_(std::move(transport)), credentials_(certificate.credentials_) {
    gnutls_session_t session = nullptr;
    Check(gnutls_init(&session, GNUTLS_SERVER));
    session_.reset(session);
    Check(gnutls_priority_set_direct(session, "NORMAL:-VERS-ALL:+VERS-TLS1.2", nullptr));
    Check(gnutls_credentials_set(session, GNUTLS_CRD_CERTIFICATE, credentials_.get()));
    gnutls_transport_set_ptr(session, this);
    gnutls_transport_set_push_function(session, [](gnutls_transport_ptr_t end, const void* data, std::size_t size) {
        const bool sent = static_cast<TlsServerEnd*>(end)->transport_.send({static_cast<const char*>(data), size});
        return sent ? static_cast<ssize_t>(size) : ssize_t{-1};
    });
    gnutls_transport_set_pull_function(session, [](gnutls_transport_ptr_t end, void* data, std::size_t size) {
        auto* const self = static_cast<TlsServerEnd*>(end);
        std::string& received = self->received_;
        if (received.empty() && !self->transport_.receive(received)) {
            return ssize_t{0};
        }
        const std::size_t taken = std::min(size, received.size());
        std::copy_n(received.data(), taken, static_cast<char*>(data));
        received.erase(0, taken);
        return static_cast<ssize_t>(taken);
    });
}

bool TlsServerEnd::ShakeHands() {
    int status = GNUTLS_E_SUCCESS;
    do {
        status = gnutls_handshake(session_.get());
    } while (status < 0 && gnutls_error_is_fatal(status) == 0);
    return status == GNUTLS_E_SUCCESS;
}

std::optional<std::string> TlsServerEnd::Read(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t read = 0; read < size;) {
        const ssize_t got = gnutls_record_recv(session_.get(), bytes.data() + read, size - read);
        if (got <= 0) {
            return std::nullopt;
        }
        read += static_cast<std::size_t>(got);
    }
    return bytes;
}

bool TlsServerEnd::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = gnutls_record_send(session_.get(), bytes.data(), bytes.size());
        if (sent <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

} // namespace test
