#include "text/SystemWords.h"

#include <array>
#include <string_view>
#include <utility>

namespace text {

Words SystemWords(const std::error_code& error) {
    constexpr std::array<std::pair<std::errc, std::string_view>, 14> inChinese = {{
        {std::errc::no_such_file_or_directory, "没有这个文件或文件夹"},
        {std::errc::permission_denied, "没有权限"},
        {std::errc::operation_not_permitted, "不允许这个操作"},
        {std::errc::is_a_directory, "这是一个文件夹"},
        {std::errc::not_a_directory, "路径中有一段不是文件夹"},
        {std::errc::file_exists, "文件已经存在"},
        {std::errc::no_space_on_device, "磁盘已满"},
        {std::errc::read_only_file_system, "文件系统是只读的"},
        {std::errc::filename_too_long, "文件名太长"},
        {std::errc::file_too_large, "文件太大"},
        {std::errc::too_many_files_open, "打开的文件太多"},
        {std::errc::io_error, "输入输出错误"},
        {std::errc::broken_pipe, "管道的另一端已关闭"},
        {std::errc::device_or_resource_busy, "文件正被占用"},
    }};
    Words words{error.message(), {}};
    for (const auto& [known, chinese] : inChinese) {
        if (error == known) {
            words.chinese = chinese;
            return words;
        }
    }
    words.chinese = words.english;
    return words;
}

} // namespace text
