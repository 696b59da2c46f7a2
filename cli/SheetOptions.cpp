#include "cli/SheetOptions.h"

#include "cli/Classes.h"

#include <stdexcept>
#include <utility>

namespace cli {
namespace {

importing::HeadingMap ReadMap(const std::vector<std::string>& entries, const UsageTexts& texts) {
    importing::HeadingMap map;
    for (const std::string& entry : entries) {
        const std::size_t sign = entry.find('=');
        if (sign == std::string::npos || sign == 0) {
            throw std::runtime_error(Fill(texts.wrongMap, entry));
        }
        map[entry.substr(0, sign)] = entry.substr(sign + 1);
    }
    return map;
}

} // namespace

const importing::ClassFields& FieldsOfClass(const std::string& name, const UsageTexts& texts) {
    const importing::ClassFields* const fields = importing::FieldsOf(name);
    if (fields == nullptr) {
        throw std::runtime_error(Fill(texts.unknownClass, name, ClassNames()));
    }
    return *fields;
}

importing::Spreadsheet OpenSpreadsheet(const SheetArguments& arguments, const UsageTexts& texts) {
    using Hidden = importing::SheetOptions::Hidden;
    importing::SheetOptions options{.headerLine = arguments.headerRow,
                                    .headings = ReadMap(arguments.map, texts),
                                    .fixCodes = arguments.fixCodes,
                                    .allowDuplicates = arguments.allowDuplicates};
    if (!arguments.hidden.empty()) {
        options.hidden = arguments.hidden == "include" ? Hidden::include : Hidden::skip;
    }
    return {arguments.file,
            {.encoding = arguments.encoding, .sheet = arguments.sheet},
            std::move(options),
            arguments.className.empty() ? nullptr : &FieldsOfClass(arguments.className, texts)};
}

} // namespace cli
