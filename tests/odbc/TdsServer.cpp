#include "tests/odbc/TdsServer.h"

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace test {
namespace {

void AppendLittle(std::string& bytes, std::uint32_t number, int count) {
    for (int index = 0; index < count; ++index) {
        bytes.push_back(static_cast<char>(number >> (8 * index) & 0xFF));
    }
}

void AppendUtf16(std::string& bytes, std::string_view ascii) {
    for (const char c : ascii) {
        bytes.push_back(c);
        bytes.push_back('\0');
    }
}

/// Token 0xAA: number, state, class, message, server, procedure, line.
std::string ErrorToken(std::uint32_t number, std::string_view message) {
    std::string body;
    AppendLittle(body, number, 4);
    AppendLittle(body, 1, 1);
    AppendLittle(body, 14, 1);
    AppendLittle(body, static_cast<std::uint32_t>(message.size()), 2);
    AppendUtf16(body, message);
    AppendLittle(body, 0, 1);
    AppendLittle(body, 0, 1);
    AppendLittle(body, 1, 2);
    std::string token = "\xAA";
    AppendLittle(token, static_cast<std::uint32_t>(body.size()), 2);
    return token + body;
}

/// Token 0xAD: interface, version of TDS, name and version of the server.
std::string LoginAcceptedToken() {
    std::string body("\x01\x07\x00\x00\x00", 5);
    AppendLittle(body, 4, 1);
    AppendUtf16(body, "Test");
    body.append("\x07\x00\x00\x00", 4);
    std::string token = "\xAD";
    AppendLittle(token, static_cast<std::uint32_t>(body.size()), 2);
    return token + body;
}

/// Token 0xFD: status, command, rows.
std::string DoneToken(std::uint32_t status) {
    std::string token = "\xFD";
    AppendLittle(token, status, 2);
    AppendLittle(token, 0, 2);
    AppendLittle(token, 0, 4);
    return token;
}

/// Packet of type 4, the last of its message; the length is big-endian.
std::string Response(const std::string& tokens) {
    const std::size_t length = tokens.size() + 8;
    std::string packet("\x04\x01", 2);
    packet.push_back(static_cast<char>(length >> 8 & 0xFF));
    packet.push_back(static_cast<char>(length & 0xFF));
    packet.append(4, '\0');
    return packet + tokens;
}

/// Reads one message, packet after packet; false when the client has gone.
bool ReadMessage(int client) {
    for (;;) {
        std::array<unsigned char, 8> header{};
        if (recv(client, header.data(), header.size(), MSG_WAITALL) != static_cast<ssize_t>(header.size())) {
            return false;
        }
        std::string body((static_cast<std::size_t>(header[2]) << 8 | header[3]) - header.size(), '\0');
        if (recv(client, body.data(), body.size(), MSG_WAITALL) != static_cast<ssize_t>(body.size())) {
            return false;
        }
        if ((header[1] & 1) != 0) {
            return true;
        }
    }
}

} // namespace

TdsServer::TdsServer(Behaviour behaviour) : behaviour_(behaviour), listener_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), length) != 0 || listen(listener_, 1) != 0 ||
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        throw std::runtime_error("no socket to listen on");
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Serve(); });
}

TdsServer::~TdsServer() {
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
}

std::string TdsServer::ConnectionString() const {
    return "Driver=FreeTDS;Server=127.0.0.1;Port=" + std::to_string(port_) +
           ";TDS_Version=7.0;Uid=kovra;Pwd=verysecret";
}

void TdsServer::Serve() const {
    const int client = accept(listener_, nullptr, nullptr);
    if (client < 0) {
        return;
    }
    if (ReadMessage(client)) {
        const std::string response = behaviour_ == Behaviour::refuseLogin
                                         ? Response(ErrorToken(18456, "Login failed for user 'kovra'.") + DoneToken(2))
                                         : Response(LoginAcceptedToken() + DoneToken(0));
        if (send(client, response.data(), response.size(), MSG_NOSIGNAL) > 0) {
            // A refused client goes by itself; an accepted one is left alone with its first statement.
            ReadMessage(client);
        }
    }
    close(client);
}

} // namespace test
