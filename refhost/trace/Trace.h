#pragma once

#include "host/Error.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace refhost {

/// Writes everything that is asked of the databases to a file, one JSON object a line.
/// Passwords inside connection strings are masked.
class Trace {
public:
    /// What becomes of what the file holds already.
    enum class Begin { empty, append };

    /// Creates the file unless it is there. Throws std::system_error when it cannot be written.
    explicit Trace(const std::string& path, Begin begin = Begin::empty);

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

    /// Writes what is still buffered. Throws std::system_error when the file did not take everything.
    void Flush();

private:
    struct Close {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };
    void Finish(Result result);

    std::string path_;
    std::unique_ptr<std::FILE, Close> file_;
    std::string line_;
    bool lossTold_ = false;
};

} // namespace refhost
