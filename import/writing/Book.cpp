#include "import/writing/Book.h"

#include "os/FileError.h"
#include "os/Files.h"

#include <ctime>
#include <fstream>
#include <new>
#include <stdexcept>
#include <utility>

#ifdef __SANITIZE_ADDRESS__
/// libxlsxwriter 1.1.4 never frees the formula of a list that a cell offers.
extern "C" const char* __lsan_default_suppressions() { return "leak:lxw_strdup\n"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#endif

namespace importing {
namespace {

/// Whether `text` begins with "_xHHHH_".
bool BeginsWithEscape(std::string_view text) {
    constexpr std::size_t length = 7;
    return text.size() >= length && text.starts_with("_x") && text[length - 1] == '_' &&
           text.substr(2, 4).find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

} // namespace

std::string CellText(std::string_view text) {
    std::string escaped;
    for (std::size_t at = 0; at < text.size(); ++at) {
        escaped.append(BeginsWithEscape(text.substr(at)) ? "_x005F" : "");
        escaped.push_back(text[at]);
    }
    return escaped;
}

Book::Book(std::string path)
    : path_(std::move(path)), replacement_(path_), workbook_(workbook_new(replacement_.path().c_str())) {
    if (!workbook_) {
        throw std::bad_alloc();
    }
    // Otherwise it would be the time of day. 2001-01-01.
    lxw_doc_properties properties{};
    constexpr std::time_t made = 978'307'200;
    properties.created = made;
    workbook_set_properties(workbook_.get(), &properties);
}

lxw_worksheet& Book::AddSheet(const std::string& name) {
    lxw_worksheet* const sheet = workbook_add_worksheet(workbook_.get(), name.c_str());
    if (sheet == nullptr) {
        throw std::runtime_error(path_ + ": " + name);
    }
    return *sheet;
}

lxw_format& Book::AddFormat() {
    lxw_format* const format = workbook_add_format(workbook_.get());
    if (format == nullptr) {
        throw std::bad_alloc();
    }
    return *format;
}

void Book::Save() {
    // The library would tell standard error why it cannot be written, and nobody else.
    if (!std::ofstream(os::PathOf(replacement_.path()), std::ios::app)) {
        throw os::FileFault(path_, os::LastFileError());
    }
    // It is freed whether it could be written or not.
    if (const lxw_error error = workbook_close(workbook_.release()); error != LXW_NO_ERROR) {
        throw std::runtime_error(path_ + ": " + lxw_strerror(error));
    }
    replacement_.Keep();
}

} // namespace importing
