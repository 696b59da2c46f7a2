#include "os/FileError.h"

#include "text/SystemWords.h"

#include <string>

namespace os {

text::Words FileWords(const std::error_code& reason) {
    if (reason == std::errc::device_or_resource_busy) {
        return {"another program has the file open; close it there and try again",
                "另一个程序正打开着这个文件，请在那里关闭后重试"};
    }
    return text::SystemWords(reason);
}

text::Fault FileFault(std::string_view name, const std::error_code& reason) {
    const text::Words words = FileWords(reason);
    const std::string named = "'" + std::string(name) + "': ";
    return text::Fault({named + words.english, named + words.chinese});
}

} // namespace os
