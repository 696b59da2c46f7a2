#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct gnutls_certificate_credentials_st;
struct gnutls_session_int;

namespace test {

/// A server's key and its certificate, signed by itself, for one host: a name, or an address with points.
class ServerCertificate {
public:
    explicit ServerCertificate(const std::string& host);

    /// The certificate as text, as files of authorities hold it.
    const std::string& pem() const { return pem_; }

private:
    friend class TlsServerEnd;

    std::string pem_;
    std::shared_ptr<gnutls_certificate_credentials_st> credentials_;
};

/// The server's end of a connection by TLS 1.2, the last one that TDS 7.4 knows.
class TlsServerEnd {
public:
    /// How its records travel. Each returns false when the client has gone.
    struct Transport {
        std::function<bool(std::string_view)> send;
        /// Appends to its argument at least a byte of what came.
        std::function<bool(std::string&)> receive;
    };

    TlsServerEnd(const ServerCertificate& certificate, Transport transport);

    /// False when the client refuses.
    bool ShakeHands();
    /// As many bytes as are asked for; nothing when the client has gone.
    std::optional<std::string> Read(std::size_t size);
    bool Write(std::string_view bytes);

private:
    struct End {
        void operator()(gnutls_session_int* session) const noexcept;
    };

    Transport transport_;
    std::string received_;
    std::shared_ptr<gnutls_certificate_credentials_st> credentials_;
    std::unique_ptr<gnutls_session_int, End> session_;
};

} // namespace test
