#include "tests/support/TdsServer.h"

#include "refhost/OpenDatabase.h"
#include "tests/support/TdsTokens.h"
#include "text/Utf16.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace test {
namespace {

using namespace tds;

/// Kinds of a client's message.
enum class MessageKind { batch = 1, attention = 6, transaction = 14, login = 16, preLogin = 18 };

struct ClientMessage {
    MessageKind kind;
    std::string body;
};

/// Reads one message, packet after packet; nothing when the client has gone.
std::optional<ClientMessage> ReadRequest(int client) {
    ClientMessage request{};
    for (;;) {
        std::array<unsigned char, 8> header{};
        if (recv(client, header.data(), header.size(), MSG_WAITALL) != static_cast<ssize_t>(header.size())) {
            return std::nullopt;
        }
        const std::size_t size = (static_cast<std::size_t>(header[2]) << 8 | header[3]) - header.size();
        const std::size_t before = request.body.size();
        request.body.resize(before + size);
        // An attention has no body, and reading none would wait for the next message.
        if (size > 0 && recv(client, request.body.data() + before, size, MSG_WAITALL) != static_cast<ssize_t>(size)) {
            return std::nullopt;
        }
        request.kind = static_cast<MessageKind>(header[0]);
        if ((header[1] & 1) != 0) {
            return request;
        }
    }
}

/// Sends tokens as packets of the size that clients start with.
bool Send(int client, std::string_view tokens) {
    constexpr std::size_t room = 4096 - 8;
    std::string packets;
    unsigned char number = 0;
    do {
        const std::string_view piece = tokens.substr(0, room);
        tokens.remove_prefix(piece.size());
        const std::size_t size = piece.size() + 8;
        packets.push_back('\x04');
        packets.push_back(tokens.empty() ? '\1' : '\0');
        packets.push_back(static_cast<char>(size >> 8));
        packets.push_back(static_cast<char>(size & 0xFF));
        packets.append(2, '\0');
        packets.push_back(static_cast<char>(++number));
        packets.push_back('\0');
        packets += piece;
    } while (!tokens.empty());
    return send(client, packets.data(), packets.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(packets.size());
}

/// Version and "no encryption here": each option its type, offset and length, the offsets highest byte first.
std::string PreLoginAnswer() {
    constexpr std::string_view answer("\x00\x00\x0B\x00\x06"
                                      "\x01\x00\x11\x00\x01"
                                      "\xFF"
                                      "\x0F\x00\x00\x00\x00\x00"
                                      "\x02",
                                      18);
    return std::string(answer);
}

std::uint32_t Little32(std::string_view bytes) {
    std::uint32_t number = 0;
    for (std::size_t index = 0; index < 4; ++index) {
        number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes.at(index))) << (8 * index);
    }
    return number;
}

/// What follows the headers that batches and transaction requests begin with.
std::string_view WithoutHeaders(std::string_view body) { return body.substr(Little32(body)); }

std::string TextOf(std::string_view bytes) {
    std::u16string units;
    for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
        units.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[index]) |
                                              static_cast<unsigned char>(bytes[index + 1]) << 8));
    }
    return text::FromUtf16(std::u16string_view(units));
}

/// Whether SQL Server rolls the whole transaction back after this error: those of conversion, and a deadlock's victim.
bool EndsTransaction(int native) {
    constexpr std::array numbers = {241, 242, 245, 295, 1205, 8114};
    return std::ranges::find(numbers, native) != numbers.end();
}

} // namespace

/// One client's connection.
class TdsServer::Session {
public:
    Session(TdsServer& server, int client) : server_(server), client_(client) {}

    void Run() {
        if (!LogIn()) {
            return;
        }
        while (const std::optional<ClientMessage> request = ReadRequest(client_)) {
            ++server_.requests_;
            if (request->kind == MessageKind::attention) {
                if (!Send(client_, Done(done::attention))) {
                    return;
                }
            } else if (request->kind == MessageKind::transaction) {
                if (!Send(client_, Transact(WithoutHeaders(request->body)))) {
                    return;
                }
            } else if (request->kind == MessageKind::batch) {
                if (!Answer(TextOf(WithoutHeaders(request->body)))) {
                    return;
                }
            } else {
                return;
            }
        }
    }

private:
    bool LogIn() {
        std::optional<ClientMessage> request = ReadRequest(client_);
        if (server_.manners_.muteLogin) {
            while (ReadRequest(client_)) {
            }
            return false;
        }
        if (request && request->kind == MessageKind::preLogin) {
            Send(client_, PreLoginAnswer());
            request = ReadRequest(client_);
        }
        if (!request) {
            return false;
        }
        if (server_.manners_.refuseLogin) {
            Send(client_, Message(18456, "Login failed for user 'kovra'.") + Done(done::error));
            // The client goes by itself.
            ReadRequest(client_);
            return false;
        }
        if (!server_.account_.empty()) {
            database_ = refhost::OpenDatabase(server_.account_);
        }
        return Send(client_, LoginAccepted() + Done(done::last));
    }

    /// The answer to a request of the transaction manager: begin, commit or roll back, and maybe begin the next.
    std::string Transact(std::string_view body) {
        constexpr char begin = 5;
        constexpr char commit = 7;
        const char verb = body.at(0);
        if (verb == begin) {
            return Begin() + Done(done::last);
        }
        if (transaction_ == 0) {
            return (verb == commit
                        ? Message(3902, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.")
                        : Message(3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.")) +
                   Done(done::error);
        }
        const auto name = static_cast<unsigned char>(body.at(2));
        const bool beginNext = body.size() > 3U + name && (body.at(3U + name) & 1) != 0;
        std::string tokens = End(verb == commit);
        if (beginNext) {
            tokens += Begin();
        }
        return tokens + Done(done::last);
    }

    std::string Begin() {
        database_->BeginTrans();
        transaction_ = ++lastTransaction_;
        return Changed(TransactionChange::begun, transaction_);
    }

    std::string End(bool commit) {
        if (commit) {
            database_->CommitTrans();
        } else {
            database_->RollbackTrans();
        }
        return Changed(commit ? TransactionChange::committed : TransactionChange::rolledBack,
                       std::exchange(transaction_, 0));
    }

    /// Runs a batch and sends its answer; false when the connection is over.
    bool Answer(const std::string& batch) {
        const Manners& manners = server_.manners_;
        if (!manners.hangUpAt.empty() && batch.find(manners.hangUpAt) != std::string::npos) {
            return false;
        }
        if (!manners.muteAt.empty() && batch.find(manners.muteAt) != std::string::npos) {
            const std::optional<ClientMessage> request = ReadRequest(client_);
            if (!request || request->kind != MessageKind::attention) {
                return false;
            }
            ++server_.cancelled_;
            return Send(client_, Done(done::attention));
        }
        return Send(client_, TokensOf(batch));
    }

    std::string TokensOf(const std::string& batch) {
        // What a client asks about its own transaction and about databases.
        if (batch == "SELECT @@TRANCOUNT") {
            return Number(host::Value(transaction_ == 0 ? 0 : 1)) + Done(done::counted, 1);
        }
        if (batch == "IF @@TRANCOUNT = 0 BEGIN TRANSACTION") {
            return (transaction_ == 0 ? Begin() : std::string()) + Done(done::last);
        }
        if (std::optional<std::string> tokens = OfDatabases(batch)) {
            return std::move(*tokens);
        }
        if (!database_) {
            return Done(done::last);
        }
        std::string tokens;
        database_->RunBatch(batch, std::nullopt, [&](const refhost::BatchAnswer& answer) {
            if (const auto* const rows = std::get_if<refhost::ResultSet>(&answer)) {
                tokens += Rows(*rows) + Done(done::more | done::counted, rows->rowCount);
            } else if (const auto* const written = std::get_if<refhost::RowsWritten>(&answer)) {
                tokens += Done(done::more | done::counted, static_cast<std::uint64_t>(written->count));
            } else if (const auto* const message = std::get_if<refhost::ServerMessage>(&answer)) {
                tokens += Message(0, message->text, 0);
            } else {
                const host::Error& error = std::get<host::Error>(answer);
                tokens += Message(error.native() == 0 ? 50000 : error.native(), error.description());
                if (transaction_ != 0 && EndsTransaction(error.native())) {
                    tokens += End(false);
                }
                tokens += Done(done::more | done::error);
            }
        });
        return tokens + Done(done::last);
    }

    /// The answer to a batch about databases; nothing for any other.
    std::optional<std::string> OfDatabases(const std::string& batch) {
        const std::filesystem::path& folder = server_.manners_.databases;
        constexpr std::string_view ask = "SELECT DB_ID(N'";
        if (batch.starts_with(ask)) {
            const bool known = folder.empty() || exists(File(batch.substr(ask.size(), batch.rfind('\'') - ask.size())));
            return Number(known ? host::Value(5) : host::Value(host::Null{})) + Done(done::counted, 1);
        }
        const auto named = [&](std::string_view verb) {
            const bool is = !folder.empty() && batch.starts_with(verb) && batch.ends_with("]");
            return is ? File(batch.substr(verb.size(), batch.size() - verb.size() - 1)) : std::filesystem::path();
        };
        if (const auto file = named("CREATE DATABASE ["); !file.empty()) {
            refhost::OpenEmbeddedDatabase(Account(file), refhost::OpenMode::create);
        } else if (const auto used = named("USE ["); !used.empty()) {
            // Back from the system database, which the account itself reaches.
            if (used == used_) {
                return std::nullopt;
            }
            used_ = used;
            // The list of databases has none behind it.
            database_ = used.stem() == "master" ? nullptr : refhost::OpenDatabase(Account(used));
        } else if (const auto dropped = named("DROP DATABASE ["); !dropped.empty()) {
            std::filesystem::remove(dropped);
        } else {
            return std::nullopt;
        }
        return Done(done::last);
    }

    std::filesystem::path File(const std::string& database) const {
        return server_.manners_.databases / (database + ".db");
    }
    static std::string Account(const std::filesystem::path& file) {
        return "Provider=KovraAccount;Data Source=" + file.string();
    }

    /// An answer of one number, or Null.
    static std::string Number(const host::Value& number) {
        refhost::ResultSet result;
        result.fields = std::make_shared<refhost::Fields>(1, host::Field{.name = {}, .type = host::FieldType::integer});
        result.cells.push_back(number);
        result.rowCount = 1;
        return Rows(result);
    }

    TdsServer& server_;
    int client_;
    std::unique_ptr<refhost::Database> database_;
    /// Of several databases the one in use.
    std::filesystem::path used_;
    Transaction transaction_ = 0;
    Transaction lastTransaction_ = 0;
};

TdsServer::TdsServer(std::string account, Manners manners)
    : account_(std::move(account)), manners_(std::move(manners)), listener_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof(address);
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), length) != 0 || listen(listener_, 16) != 0 ||
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        throw std::runtime_error("no socket to listen on");
    }
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Serve(); });
}

TdsServer::~TdsServer() {
    {
        const std::lock_guard lock(mutex_);
        closing_ = true;
        for (const int client : clients_) {
            shutdown(client, SHUT_RDWR);
        }
    }
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    for (std::thread& session : sessions_) {
        session.join();
    }
    for (const int client : clients_) {
        close(client);
    }
    close(listener_);
}

std::string TdsServer::ConnectionString() const {
    return "Driver=FreeTDS;Server=127.0.0.1;Port=" + std::to_string(port_) +
           ";TDS_Version=7.4;ClientCharset=UTF-8;Uid=kovra;Pwd=verysecret";
}

void TdsServer::Serve() {
    for (;;) {
        const int client = accept(listener_, nullptr, nullptr);
        const std::lock_guard lock(mutex_);
        if (client < 0 || closing_) {
            if (client >= 0) {
                close(client);
            }
            return;
        }
        const int noDelay = 1;
        setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &noDelay, sizeof(noDelay));
        clients_.push_back(client);
        sessions_.emplace_back([this, client] {
            Session(*this, client).Run();
            shutdown(client, SHUT_RDWR);
        });
    }
}

} // namespace test
