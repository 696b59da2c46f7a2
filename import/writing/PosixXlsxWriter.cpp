// libxlsxwriter, loaded by the first workbook that is written. Together with libcrypto, which it brings along, it would
// take a quarter of the time that a program takes to start.
#include <stdexcept>
#include <string>

#include <dlfcn.h>
#include <xlsxwriter.h>

namespace {

/// Throws std::runtime_error, which names the library, when it is not installed.
void* Library() {
    static void* const library = [] {
        void* const opened = dlopen("libxlsxwriter.so." LXW_SOVERSION, RTLD_NOW | RTLD_LOCAL);
        if (opened == nullptr) {
            throw std::runtime_error(dlerror());
        }
        return opened;
    }();
    return library;
}

/// Calls the library's own function behind `declared`.
template <auto* declared, class... Argument> auto Call(const char* name, Argument... arguments) {
    static const auto function = reinterpret_cast<decltype(declared)>(dlsym(Library(), name));
    if (function == nullptr) {
        throw std::runtime_error(std::string(name) + ": libxlsxwriter has no such function");
    }
    return function(arguments...);
}

} // namespace

extern "C" {

lxw_workbook* workbook_new(const char* path) { return Call<workbook_new>(__func__, path); }
lxw_error workbook_close(lxw_workbook* book) { return Call<workbook_close>(__func__, book); }
void lxw_workbook_free(lxw_workbook* book) { Call<lxw_workbook_free>(__func__, book); }
char* lxw_strerror(lxw_error error) { return Call<lxw_strerror>(__func__, error); }

lxw_worksheet* workbook_add_worksheet(lxw_workbook* book, const char* name) {
    return Call<workbook_add_worksheet>(__func__, book, name);
}
lxw_format* workbook_add_format(lxw_workbook* book) { return Call<workbook_add_format>(__func__, book); }
lxw_error workbook_set_properties(lxw_workbook* book, lxw_doc_properties* properties) {
    return Call<workbook_set_properties>(__func__, book, properties);
}

void format_set_align(lxw_format* format, uint8_t alignment) { Call<format_set_align>(__func__, format, alignment); }
void format_set_bg_color(lxw_format* format, lxw_color_t color) { Call<format_set_bg_color>(__func__, format, color); }
void format_set_bold(lxw_format* format) { Call<format_set_bold>(__func__, format); }
void format_set_border(lxw_format* format, uint8_t style) { Call<format_set_border>(__func__, format, style); }
void format_set_num_format(lxw_format* format, const char* text) {
    Call<format_set_num_format>(__func__, format, text);
}
void format_set_num_format_index(lxw_format* format, uint8_t index) {
    Call<format_set_num_format_index>(__func__, format, index);
}
void format_set_text_wrap(lxw_format* format) { Call<format_set_text_wrap>(__func__, format); }

void worksheet_freeze_panes(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column) {
    Call<worksheet_freeze_panes>(__func__, sheet, row, column);
}
lxw_error worksheet_set_column(lxw_worksheet* sheet, lxw_col_t first, lxw_col_t last, double width,
                               lxw_format* format) {
    return Call<worksheet_set_column>(__func__, sheet, first, last, width, format);
}
lxw_error worksheet_data_validation_range(lxw_worksheet* sheet, lxw_row_t firstRow, lxw_col_t firstColumn,
                                          lxw_row_t lastRow, lxw_col_t lastColumn, lxw_data_validation* validation) {
    return Call<worksheet_data_validation_range>(__func__, sheet, firstRow, firstColumn, lastRow, lastColumn,
                                                 validation);
}
lxw_error worksheet_write_boolean(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, int value,
                                  lxw_format* format) {
    return Call<worksheet_write_boolean>(__func__, sheet, row, column, value, format);
}
lxw_error worksheet_write_comment_opt(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, const char* text,
                                      lxw_comment_options* options) {
    return Call<worksheet_write_comment_opt>(__func__, sheet, row, column, text, options);
}
lxw_error worksheet_write_datetime(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, lxw_datetime* time,
                                   lxw_format* format) {
    return Call<worksheet_write_datetime>(__func__, sheet, row, column, time, format);
}
lxw_error worksheet_write_number(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, double number,
                                 lxw_format* format) {
    return Call<worksheet_write_number>(__func__, sheet, row, column, number, format);
}
lxw_error worksheet_write_string(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, const char* text,
                                 lxw_format* format) {
    return Call<worksheet_write_string>(__func__, sheet, row, column, text, format);
}
}
