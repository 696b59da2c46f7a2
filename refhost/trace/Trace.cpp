#include "refhost/trace/Trace.h"

#include "os/Files.h"
#include "refhost/trace/HostCall.h"
#include "text/ConnectionString.h"
#include "text/Json.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace refhost {
namespace {

class FileSink final : public TraceSink {
public:
    FileSink(const std::string& path, Trace::Begin begin)
        : path_(path), file_(os::OpenFile(path, begin == Trace::Begin::append ? "ab" : "wb")) {
        if (!file_) {
            throw std::system_error(errno, std::generic_category(), path);
        }
    }

    void Add(std::string_view line) noexcept override { std::fwrite(line.data(), 1, line.size(), file_.get()); }
    void Flush() override {
        if (std::fflush(file_.get()) != 0 || std::ferror(file_.get()) != 0) {
            throw std::system_error(errno, std::generic_category(), path_);
        }
    }

private:
    struct Close {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };
    std::string path_;
    std::unique_ptr<std::FILE, Close> file_;
};

} // namespace

Trace::Trace(const std::string& path, Begin begin, Times times)
    : Trace(std::make_unique<FileSink>(path, begin), times) {}

text::JsonWriter Trace::Operation(std::string_view operation) {
    line_.clear();
    return text::JsonWriter(line_).Open('{').Member("op", operation);
}

void Trace::Connect(std::string_view connection, std::string_view user, std::string_view password, int options,
                    Result result) {
    Operation("Connect")
        .Member("connection", text::MaskPasswords(connection))
        .Member("user", user)
        .Member("password", password.empty() ? "" : "***")
        .Member("options", options);
    Finish(result);
}

void Trace::Open(std::string_view sql, int cursor, int lock, int options, int location, Result result) {
    Operation("Open")
        .Member("sql", sql)
        .Member("cursor", cursor)
        .Member("lock", lock)
        .Member("options", options)
        .Member("location", location);
    Finish(result);
}

void Trace::Execute(std::string_view sql, int options, Result result) {
    Operation("Execute").Member("sql", sql).Member("options", options);
    Finish(result);
}

void Trace::Transaction(std::string_view operation, Result result) {
    Operation(operation);
    Finish(result);
}

void Trace::ConnectionLost(std::string_view description) {
    if (!lossTold_) {
        lossTold_ = true;
        Operation("ConnectionLost").Member("description", description);
        Finish(0);
    }
}

void Trace::Finish(Result result) {
    text::JsonWriter json(line_);
    if (HostCall::Active()) {
        json.Member("host", true);
    }
    if (result != 0) {
        json.Member("error", result);
    }
    if (TellsTimes()) {
        json.Member("us", std::exchange(took_, {}).count());
    }
    json.Close('}');
    line_.push_back('\n');
    sink_->Add(line_);
}

void Trace::Flush() {
    sink_->Flush();
    if (lineLost_) {
        throw std::system_error(ENOMEM, std::generic_category(), "trace");
    }
}

} // namespace refhost
