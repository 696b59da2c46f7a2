#include "tests/support/TdsServer.h"

#include "refhost/OpenDatabase.h"
#include "tests/support/ServerDatabases.h"
#include "tests/support/TdsCalls.h"
#include "tests/support/TdsTokens.h"
#include "tests/support/Tls.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
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

/// Kinds of a message: the server's are answers, and before the login of the client's own kind.
enum class MessageKind { batch = 1, call = 3, answer = 4, attention = 6, transaction = 14, login = 16, preLogin = 18 };

struct ClientMessage {
    MessageKind kind;
    std::string body;
};

/// Length in a packet's header, highest byte first; the header counts.
std::size_t BodySize(std::string_view header) {
    return (static_cast<std::size_t>(static_cast<unsigned char>(header[2])) << 8 |
            static_cast<unsigned char>(header[3])) -
           header.size();
}

constexpr std::size_t headerSize = 8;

/// A message as packets of the size that clients start with.
std::string Packets(MessageKind kind, std::string_view message) {
    constexpr std::size_t room = 4096 - headerSize;
    std::string packets;
    unsigned char number = 0;
    do {
        const std::string_view piece = message.substr(0, room);
        message.remove_prefix(piece.size());
        const std::size_t size = piece.size() + headerSize;
        packets.push_back(static_cast<char>(kind));
        packets.push_back(message.empty() ? '\1' : '\0');
        packets.push_back(static_cast<char>(size >> 8));
        packets.push_back(static_cast<char>(size & 0xFF));
        packets.append(2, '\0');
        packets.push_back(static_cast<char>(++number));
        packets.push_back('\0');
        packets += piece;
    } while (!message.empty());
    return packets;
}

/// What client and server say of encryption before the login: none but of the login, all, they have none, or they
/// insist.
enum class Encrypts { login = 0, all = 1, nothing = 2, required = 3 };

/// What the client says. Options come as their kind, and where their value stands with its length, highest byte first.
Encrypts ClientsWish(std::string_view preLogin) {
    constexpr char encryption = 1;
    constexpr char end = '\xFF';
    for (std::size_t option = 0; preLogin.at(option) != end; option += 5) {
        if (preLogin[option] == encryption) {
            const std::size_t at = static_cast<std::size_t>(static_cast<unsigned char>(preLogin.at(option + 1))) << 8 |
                                   static_cast<unsigned char>(preLogin.at(option + 2));
            return static_cast<Encrypts>(preLogin.at(at));
        }
    }
    return Encrypts::nothing;
}

/// The server's version, and what it says of encryption.
std::string PreLoginAnswer(Encrypts encrypts) {
    constexpr std::string_view answer("\x00\x00\x0B\x00\x06"
                                      "\x01\x00\x11\x00\x01"
                                      "\xFF"
                                      "\x0F\x00\x00\x00\x00\x00",
                                      17);
    return std::string(answer) + static_cast<char>(encrypts);
}

/// What follows the headers that batches and transaction requests begin with.
std::string_view WithoutHeaders(std::string_view body) { return body.substr(Reader(body).Little(4)); }

std::string TextOf(std::string_view bytes) { return Reader(bytes).Text(bytes.size() / 2); }

/// The database that a client logs in to; empty when it names none. The message's fixed part tells where the text
/// stands and its length in characters.
std::string DatabaseIn(std::string_view login) {
    constexpr std::size_t entry = 36 + 8 * 4;
    Reader place(login.substr(entry));
    const std::size_t begin = place.Little(2);
    return Reader(login.substr(begin)).Text(place.Little(2));
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
        while (const std::optional<ClientMessage> request = ReadRequest()) {
            ++server_.requests_;
            if (request->kind == MessageKind::attention) {
                if (!Send(Done(done::attention))) {
                    return;
                }
            } else if (request->kind == MessageKind::transaction) {
                if (!Send(Transact(WithoutHeaders(request->body)))) {
                    return;
                }
            } else if (request->kind == MessageKind::batch) {
                server_.Note(tls_ ? &Encryption::encryptedBatches : &Encryption::plainBatches);
                if (!Answer(TextOf(WithoutHeaders(request->body)))) {
                    return;
                }
            } else if (request->kind == MessageKind::call) {
                ++server_.calls_;
                if (!Send(TokensOfCalls(WithoutHeaders(request->body)))) {
                    return;
                }
            } else {
                return;
            }
        }
    }

private:
    /// As many bytes of the line as are asked for; nothing when the client has gone.
    std::optional<std::string> ReadLine(std::size_t size) const {
        std::string bytes(size, '\0');
        // Reading none would wait for the next message.
        if (size > 0 && recv(client_, bytes.data(), size, MSG_WAITALL) != static_cast<ssize_t>(size)) {
            return std::nullopt;
        }
        return bytes;
    }
    bool WriteLine(std::string_view bytes) const {
        return send(client_, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    }

    /// Reads one message, packet after packet; nothing when the client has gone.
    std::optional<ClientMessage> ReadRequest() {
        const auto read = [this](std::size_t size) { return tls_ ? tls_->Read(size) : ReadLine(size); };
        ClientMessage request{};
        for (;;) {
            const std::optional<std::string> header = read(headerSize);
            const std::optional<std::string> body = header ? read(BodySize(*header)) : std::nullopt;
            if (!body) {
                return std::nullopt;
            }
            request.body += *body;
            request.kind = static_cast<MessageKind>((*header)[0]);
            if (((*header)[1] & 1) != 0) {
                return request;
            }
        }
    }

    bool Send(std::string_view tokens) {
        const std::string packets = Packets(MessageKind::answer, tokens);
        return tls_ ? tls_->Write(packets) : WriteLine(packets);
    }

    Encrypts AnswerTo(Encrypts wish) const {
        if (server_.manners_.certificate == nullptr) {
            return Encrypts::nothing;
        }
        return server_.manners_.requiresEncryption ? Encrypts::required : wish;
    }

    /// The handshake's records travel as messages of the time before the login, and later ones as they are.
    bool Encrypt() {
        const auto send = [this](std::string_view records) {
            return WriteLine(recordsTravelBare_ ? std::string(records) : Packets(MessageKind::preLogin, records));
        };
        const auto receive = [this](std::string& received) {
            if (recordsTravelBare_) {
                std::array<char, 4096> bytes;
                const ssize_t count = recv(client_, bytes.data(), bytes.size(), 0);
                received.append(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
                return count > 0;
            }
            const std::optional<std::string> header = ReadLine(headerSize);
            const std::optional<std::string> body = header ? ReadLine(BodySize(*header)) : std::nullopt;
            received += body.value_or("");
            return body.has_value();
        };
        tls_.emplace(*server_.manners_.certificate, TlsServerEnd::Transport{send, receive});
        recordsTravelBare_ = tls_->ShakeHands();
        return recordsTravelBare_;
    }

    bool LogIn() {
        std::optional<ClientMessage> request = ReadRequest();
        if (server_.manners_.muteLogin) {
            while (ReadRequest()) {
            }
            return false;
        }
        Encrypts encrypts = Encrypts::nothing;
        if (request && request->kind == MessageKind::preLogin) {
            encrypts = AnswerTo(ClientsWish(request->body));
            Send(PreLoginAnswer(encrypts));
            if (encrypts != Encrypts::nothing && !Encrypt()) {
                return false;
            }
            request = ReadRequest();
        }
        if (!request) {
            return false;
        }
        server_.Note(tls_ ? &Encryption::encryptedLogins : &Encryption::plainLogins);
        if (encrypts == Encrypts::login) {
            tls_.reset();
        }
        if (server_.manners_.refuseLogin) {
            Send(Message(18456, "Login failed for user 'kovra'.") + Done(done::error));
            // The client goes by itself.
            ReadRequest();
            return false;
        }
        try {
            OpenFor(DatabaseIn(request->body));
        } catch (const host::Error& error) {
            Send(Message(error.native(), error.description()) + Done(done::error));
            ReadRequest();
            return false;
        }
        return Send(LoginAccepted() + Done(done::last));
    }

    /// Opens what stands behind the server, for a client that logs in to `database`.
    void OpenFor(const std::string& database) {
        if (const std::filesystem::path& folder = server_.manners_.databases; !folder.empty()) {
            database_ = std::make_unique<ServerDatabases>(folder, database.empty() ? "master" : database,
                                                          server_.manners_.mayCreate);
        } else if (!server_.account_.empty()) {
            database_ = refhost::OpenDatabase(server_.account_);
        }
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
            const std::optional<ClientMessage> request = ReadRequest();
            if (!request || request->kind != MessageKind::attention) {
                return false;
            }
            ++server_.cancelled_;
            return Send(Done(done::attention));
        }
        if (!manners.deadlockAt.empty() && batch.find(manners.deadlockAt) != std::string::npos) {
            return Send(Refusal({0,
                                 "Transaction (Process ID 52) was deadlocked on lock resources with another process "
                                 "and has been chosen as the deadlock victim. Rerun the transaction.",
                                 1205}) +
                        Done(done::error));
        }
        return Send(TokensOf(batch));
    }

    /// An error, and the end of the transaction where it is one that ends it.
    std::string Refusal(const host::Error& error) {
        std::string tokens = Message(error.native() == 0 ? 50000 : error.native(), error.description());
        if (transaction_ != 0 && EndsTransaction(error.native())) {
            tokens += End(false);
        }
        return tokens;
    }

    /// The answers to a text that comes as a batch of its own, or as what a procedure runs.
    std::string TokensOf(const std::string& batch, bool inProcedure = false) {
        // What a client asks about its own transaction.
        if (batch == "SELECT @@TRANCOUNT") {
            return Number(host::Value(transaction_ == 0 ? 0 : 1)) + Done(done::counted, 1);
        }
        if (batch == "IF @@TRANCOUNT = 0 BEGIN TRANSACTION") {
            return (transaction_ == 0 ? Begin() : std::string()) + Done(done::last);
        }
        if (!database_) {
            return Done(done::last);
        }
        // Every statement's end says that more comes, except for the last one's of a batch.
        struct End {
            int status = done::last;
            std::uint64_t rows = 0;
        };
        std::string tokens;
        std::optional<End> end;
        const auto append = [&](const std::string& answer, int status, std::uint64_t rows) {
            if (end && !inProcedure) {
                tokens += Done(end->status | done::more, end->rows);
            }
            tokens += answer;
            end = {status, rows};
            if (inProcedure) {
                tokens += DoneInProcedure(status, rows);
            }
        };
        database_->RunBatch(batch, std::nullopt, [&](const refhost::BatchAnswer& answer) {
            if (const auto* const rows = std::get_if<refhost::ResultSet>(&answer)) {
                append(Rows(*rows), done::counted, rows->rowCount);
            } else if (const auto* const written = std::get_if<refhost::RowsWritten>(&answer)) {
                if (written->count >= 0) {
                    append({}, done::counted, static_cast<std::uint64_t>(written->count));
                }
            } else if (const auto* const message = std::get_if<refhost::ServerMessage>(&answer)) {
                append(Message(0, message->text, 0), done::last, 0);
            } else {
                append(Refusal(std::get<host::Error>(answer)), done::error, 0);
            }
        });
        const End last = end.value_or(End());
        return tokens + (inProcedure ? ProcedureDone(last.status & done::error) : Done(last.status, last.rows));
    }

    /// The answers to a message that calls procedures.
    std::string TokensOfCalls(std::string_view body) {
        std::string tokens;
        try {
            for (const ProcedureCall& call : ProcedureCalls(body)) {
                tokens += TokensOf(call);
            }
        } catch (const std::exception& error) {
            return Message(50000, error.what()) + ProcedureDone(done::error);
        }
        return tokens;
    }

    /// A text is looked at when it runs: what is wrong with it, and which columns it has, the preparing does not tell.
    std::string TokensOf(const ProcedureCall& call) {
        switch (call.procedure) {
        case Procedure::prepare:
            return ReturnedNumber(Prepare(call)) + ProcedureDone(done::last);
        case Procedure::prepareAndExecute: {
            const std::int32_t handle = Prepare(call);
            return ReturnedNumber(handle) + TokensOf(prepared_.at(handle), true);
        }
        case Procedure::execute:
            return TokensOf(prepared_.at(call.Number(0)), true);
        case Procedure::unprepare:
            prepared_.erase(call.Number(0));
            return ProcedureDone(done::last);
        }
        return {};
    }

    /// Takes a text; the arguments are the place for its number, the declarations of its parameters, and the text.
    std::int32_t Prepare(const ProcedureCall& call) {
        if (const auto* const declared = std::get_if<std::string>(&call.arguments.at(1));
            declared && !declared->empty()) {
            throw std::runtime_error("a text with parameters, which is not served");
        }
        prepared_[++lastPrepared_] = call.Text(2);
        return lastPrepared_;
    }

    /// An answer of one number.
    static std::string Number(const host::Value& number) {
        refhost::ResultSet result;
        result.fields = std::make_shared<refhost::Fields>(1, host::Field{.name = {}, .type = host::FieldType::integer});
        result.cells.Add(number);
        result.rowCount = 1;
        return Rows(result);
    }

    TdsServer& server_;
    int client_;
    std::optional<TlsServerEnd> tls_;
    /// Whether the records of the encrypted connection travel as they are.
    bool recordsTravelBare_ = false;
    std::unique_ptr<refhost::Database> database_;
    Transaction transaction_ = 0;
    Transaction lastTransaction_ = 0;
    /// What the client prepared, by the number that it was given for it.
    std::map<std::int64_t, std::string> prepared_;
    std::int32_t lastPrepared_ = 0;
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

TdsServer::Encryption TdsServer::Seen() {
    const std::lock_guard lock(mutex_);
    return seen_;
}

void TdsServer::Note(int Encryption::*what) {
    const std::lock_guard lock(mutex_);
    ++(seen_.*what);
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
