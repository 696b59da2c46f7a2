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

void AppendMember(std::string& line, std::string_view name, std::string_view text) {
    line.append(line.size() > 1 ? ",\"" : "\"").append(name).append("\":");
    text::AppendJsonString(line, text);
}

void AppendMember(std::string& line, std::string_view name, int number) {
    line.append(",\"").append(name).append("\":").append(std::to_string(number));
}

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

void Trace::Connect(std::string_view connection, std::string_view user, std::string_view password, int options,
                    Result result) {
    line_ = "{";
    AppendMember(line_, "op", "Connect");
    AppendMember(line_, "connection", text::MaskPasswords(connection));
    AppendMember(line_, "user", user);
    AppendMember(line_, "password", password.empty() ? "" : "***");
    AppendMember(line_, "options", options);
    Finish(result);
}

void Trace::Open(std::string_view sql, int cursor, int lock, int options, int location, Result result) {
    line_ = "{";
    AppendMember(line_, "op", "Open");
    AppendMember(line_, "sql", sql);
    AppendMember(line_, "cursor", cursor);
    AppendMember(line_, "lock", lock);
    AppendMember(line_, "options", options);
    AppendMember(line_, "location", location);
    Finish(result);
}

void Trace::Execute(std::string_view sql, int options, Result result) {
    line_ = "{";
    AppendMember(line_, "op", "Execute");
    AppendMember(line_, "sql", sql);
    AppendMember(line_, "options", options);
    Finish(result);
}

void Trace::Transaction(std::string_view operation, Result result) {
    line_ = "{";
    AppendMember(line_, "op", operation);
    Finish(result);
}

void Trace::ConnectionLost(std::string_view description) {
    if (!lossTold_) {
        lossTold_ = true;
        line_ = "{";
        AppendMember(line_, "op", "ConnectionLost");
        AppendMember(line_, "description", description);
        Finish(0);
    }
}

void Trace::Finish(Result result) {
    if (HostCall::Active()) {
        line_.append(",\"host\":true");
    }
    if (result != 0) {
        AppendMember(line_, "error", result);
    }
    if (TellsTimes()) {
        line_.append(",\"us\":").append(std::to_string(std::exchange(took_, {}).count()));
    }
    line_.append("}\n");
    sink_->Add(line_);
}

void Trace::Flush() {
    sink_->Flush();
    if (lineLost_) {
        throw std::system_error(ENOMEM, std::generic_category(), "trace");
    }
}

} // namespace refhost
