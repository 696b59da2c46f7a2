#pragma once

#include "host/Error.h"
#include "text/Json.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace refhost {

/// Where the lines of a trace go.
class TraceSink {
public:
    TraceSink() = default;
    virtual ~TraceSink() = default;
    TraceSink(const TraceSink&) = delete;
    TraceSink& operator=(const TraceSink&) = delete;

    /// Takes a line with its line feed. What cannot be written is missing, and `Flush` says so.
    virtual void Add(std::string_view line) noexcept = 0;
    /// Writes what is still buffered. Throws std::system_error when lines are missing.
    virtual void Flush() = 0;
};

/// Tells a sink everything that is asked of the databases, one JSON object a line. Passwords inside connection strings
/// are masked.
class Trace {
public:
    /// What becomes of what the file holds already.
    enum class Begin { empty, append };
    /// Whether each line tells how long its operation took, as `us`, in microseconds.
    enum class Times { untold, told };

    /// To a file, which is created unless it is there. Throws std::system_error when it cannot be written.
    explicit Trace(const std::string& path, Begin begin = Begin::empty, Times times = Times::untold);
    Trace(std::unique_ptr<TraceSink> sink, Times times) : sink_(std::move(sink)), times_(times) {}

    bool TellsTimes() const noexcept { return times_ == Times::told; }
    /// How long the operation took that is told of next.
    void Took(std::chrono::microseconds time) noexcept { took_ = time; }

    /// What came of an operation: 0 for success, else the error's number.
    using Result = host::ErrorNumber;

    void Connect(std::string_view connection, std::string_view user, std::string_view password, int options,
                 Result result);
    void Open(std::string_view sql, int cursor, int lock, int options, int location, Result result);
    void Execute(std::string_view sql, int options, Result result);
    /// "BeginTrans", "CommitTrans" or "RollbackTrans".
    void Transaction(std::string_view operation, Result result);

    /// Notes that the connection is gone, behind the operation that met it; once, however many more fail for it.
    void ConnectionLost(std::string_view description);

    /// Notes that a line is missing, for want of memory.
    void LineLost() noexcept { lineLost_ = true; }

    /// As `TraceSink::Flush`.
    void Flush();

private:
    /// Begins a line.
    text::JsonWriter Operation(std::string_view operation);
    void Finish(Result result);

    std::unique_ptr<TraceSink> sink_;
    Times times_;
    std::chrono::microseconds took_{0};
    std::string line_;
    bool lossTold_ = false;
    bool lineLost_ = false;
};

} // namespace refhost
