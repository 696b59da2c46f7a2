#include "import/writing/Template.h"

#include "import/messages/Note.h"
#include "import/reading/Cell.h"
#include "import/writing/Book.h"
#include "text/Utf8.h"

#include <algorithm>
#include <map>
#include <string_view>

#include <fmt/format.h>

namespace importing {
namespace {

constexpr lxw_row_t lastRow = 1'048'575;
/// The largest number that a spreadsheet keeps whole.
constexpr double largest = 1e15;

/// What a list of codes is called.
Message NameOf(CodeList list) {
    switch (list) {
    case CodeList::warehouse:
    case CodeList::costedWarehouse:
        return message::listWarehouses;
    case CodeList::item:
        return message::listItems;
    case CodeList::itemClass:
        return message::listItemClasses;
    case CodeList::account:
        return message::listAccounts;
    case CodeList::category:
    case CodeList::leafCategory:
        return message::listCategories;
    case CodeList::department:
    case CodeList::leafDepartment:
        return message::listDepartments;
    case CodeList::projectClass:
        return message::listProjectClasses;
    case CodeList::none:
        break;
    }
    return message::listCodes;
}

/// Columns of a text in the sheet's font: two for each character beyond ASCII.
double WidthOf(std::string_view text) {
    double width = 0;
    for (std::size_t position = 0; position < text.size();) {
        const text::Utf8Character character = text::ReadUtf8(text, position);
        position += character.length;
        width += character.length == 1 ? 1 : 2;
    }
    return width;
}

class TemplateWriter {
public:
    TemplateWriter(const std::string& path, const ClassFields& classFields, const CodeLists& codes, Language language)
        : classFields_(classFields), codes_(codes), language_(language), book_(path),
          rows_(book_.AddSheet(Say({message::sheetOfRows, {}}))) {}

    void Write() {
        MakeFormats();
        WriteCodes();
        lxw_col_t column = 0;
        for (const Field& field : classFields_.fields) {
            WriteColumn(column++, field);
        }
        worksheet_freeze_panes(&rows_, 1, 0);
        book_.Save();
    }

private:
    std::string Say(const Note& note) const { return Words(note, language_); }

    void MakeFormats() {
        for (lxw_format* const each : {heading_, required_}) {
            format_set_bold(each);
            format_set_border(each, LXW_BORDER_THIN);
            format_set_align(each, LXW_ALIGN_CENTER);
            constexpr lxw_color_t pale = 0xDDEBF7;
            constexpr lxw_color_t strong = 0xFFE699;
            format_set_bg_color(each, each == required_ ? strong : pale);
        }
        format_set_num_format_index(text_, textFormat);
        format_set_num_format(date_, "yyyy-mm-dd");
    }

    void WriteColumn(lxw_col_t column, const Field& field) {
        const bool chinese = language_ == Language::chinese;
        std::string heading(chinese ? field.chinese : field.english);
        heading.append(field.required ? "*" : "");
        constexpr double narrowest = 12;
        constexpr double margin = 4;
        worksheet_set_column(&rows_, column, column, std::max(narrowest, WidthOf(heading) + margin), FormatOf(field));
        worksheet_write_string(&rows_, 0, column, heading.c_str(), field.required ? required_ : heading_);
        std::string note = NoteOn(field);
        lxw_comment_options options{};
        constexpr std::uint16_t width = 260;
        constexpr std::uint16_t height = 90;
        options.width = width;
        options.height = height;
        worksheet_write_comment_opt(&rows_, 0, column, note.c_str(), &options);
        Validate(column, field, heading, note);
    }

    lxw_format* FormatOf(const Field& field) {
        switch (field.type) {
        case FieldType::number:
        case FieldType::price:
            return nullptr;
        case FieldType::date:
            return date_;
        case FieldType::code:
        case FieldType::text:
        case FieldType::name:
            break;
        }
        return text_;
    }

    std::string NoteOn(const Field& field) const {
        std::string note = field.required ? Say({message::fieldRequired, {}}) + "\n" : "";
        const std::string length = std::to_string(field.length);
        switch (field.type) {
        case FieldType::code:
            note.append(field.list == CodeList::none
                            ? Say({message::fieldCode, {length}})
                            : Say({message::fieldCodeOfList, {length, Say({NameOf(field.list), {}})}}));
            break;
        case FieldType::number:
            note.append(Say({message::fieldNumber, {}}));
            break;
        case FieldType::price:
            note.append(Say({message::fieldPrice, {}}));
            break;
        case FieldType::date:
            note.append(Say({message::fieldDate, {}}));
            break;
        case FieldType::text:
            note.append(Say({message::fieldText, {length}}));
            break;
        case FieldType::name:
            note.append(Say({message::fieldName, {length}}));
            break;
        }
        return note.append("\n").append(Say({message::fieldElement, {std::string(field.element)}}));
    }

    /// Has the spreadsheet refuse what the column does not take.
    void Validate(lxw_col_t column, const Field& field, std::string& heading, std::string& note) {
        lxw_data_validation validation{};
        // Excel takes no longer title.
        constexpr std::size_t longestTitle = 32;
        validation.error_title = heading.size() <= longestTitle ? heading.data() : nullptr;
        validation.error_message = note.data();
        const auto range = ranges_.find(field.list);
        switch (field.type) {
        case FieldType::number:
        case FieldType::price:
            validation.validate = LXW_VALIDATION_TYPE_DECIMAL;
            validation.criteria = LXW_VALIDATION_CRITERIA_BETWEEN;
            validation.minimum_number = field.type == FieldType::price ? 0 : -largest;
            validation.maximum_number = largest;
            break;
        case FieldType::date:
            validation.validate = LXW_VALIDATION_TYPE_DATE;
            validation.criteria = LXW_VALIDATION_CRITERIA_BETWEEN;
            validation.minimum_datetime = {.year = 1990, .month = 1, .day = 1, .hour = 0, .min = 0, .sec = 0};
            validation.maximum_datetime = {.year = 2100, .month = 1, .day = 1, .hour = 0, .min = 0, .sec = 0};
            break;
        case FieldType::code:
        case FieldType::text:
        case FieldType::name:
            if (field.type == FieldType::code && range != ranges_.end()) {
                validation.validate = LXW_VALIDATION_TYPE_LIST_FORMULA;
                validation.value_formula = range->second.data();
            } else {
                validation.validate = LXW_VALIDATION_TYPE_LENGTH;
                validation.criteria = LXW_VALIDATION_CRITERIA_LESS_THAN_OR_EQUAL_TO;
                validation.value_number = static_cast<double>(field.length);
            }
            break;
        }
        worksheet_data_validation_range(&rows_, 1, column, lastRow, column, &validation);
    }

    /// Writes the lists of codes, two columns each: the codes and their names.
    void WriteCodes() {
        lxw_worksheet* sheet = nullptr;
        lxw_col_t column = 0;
        const std::string name = Say({message::sheetOfCodes, {}});
        for (const Field& field : classFields_.fields) {
            const auto list = codes_.find(field.list);
            if (list == codes_.end() || list->second.empty() || ranges_.contains(field.list)) {
                continue;
            }
            if (sheet == nullptr) {
                sheet = &book_.AddSheet(name);
                worksheet_freeze_panes(sheet, 1, 0);
            }
            constexpr double codeWidth = 20;
            constexpr double nameWidth = 30;
            const auto names = static_cast<lxw_col_t>(column + 1);
            worksheet_set_column(sheet, column, column, codeWidth, text_);
            worksheet_set_column(sheet, names, names, nameWidth, text_);
            const std::string heading = Say({message::validCodes, {Say({NameOf(field.list), {}})}});
            worksheet_write_string(sheet, 0, column, heading.c_str(), heading_);
            worksheet_write_string(sheet, 0, names, Say({message::codeNames, {}}).c_str(), heading_);
            lxw_row_t row = 0;
            for (const auto& [upperCase, known] : list->second.all()) {
                if (row == lastRow) {
                    break;
                }
                ++row;
                worksheet_write_string(sheet, row, column, CellText(known.code).c_str(), text_);
                worksheet_write_string(sheet, row, names, CellText(known.name).c_str(), text_);
            }
            const std::string letters = ColumnName(column);
            ranges_[field.list] = fmt::format("='{0}'!${1}$2:${1}${2}", name, letters, row + 1);
            constexpr lxw_col_t step = 3;
            column = static_cast<lxw_col_t>(column + step);
        }
    }

    const ClassFields& classFields_;
    const CodeLists& codes_;
    Language language_;
    Book book_;
    lxw_worksheet& rows_;
    lxw_format* heading_ = &book_.AddFormat();
    lxw_format* required_ = &book_.AddFormat();
    lxw_format* text_ = &book_.AddFormat();
    lxw_format* date_ = &book_.AddFormat();
    /// Where the lists stand in the workbook, as formulas.
    std::map<CodeList, std::string> ranges_;
};

} // namespace

void WriteTemplate(const std::string& path, const ClassFields& classFields, const CodeLists& codes, Language language) {
    TemplateWriter(path, classFields, codes, language).Write();
}

} // namespace importing
