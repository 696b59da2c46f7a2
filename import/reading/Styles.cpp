#include "import/reading/Styles.h"

#include "import/reading/NumberFormat.h"
#include "import/reading/PartReader.h"
#include "import/reading/WholeNumber.h"

#include <map>

namespace importing {

std::vector<bool> ReadDateStyles(Archive& archive, const std::string& part) {
    std::vector<bool> dates;
    std::map<unsigned, bool> own;
    PartReader reader(archive, part);
    bool insideFormats = false;
    for (auto event = reader.Next(); event != PartReader::Event::none; event = reader.Next()) {
        if (event == PartReader::Event::text) {
            continue;
        }
        const std::string_view name = reader.Name();
        if (name == "cellXfs") {
            insideFormats = event == PartReader::Event::start;
        } else if (event == PartReader::Event::start && name == "numFmt") {
            const auto id = static_cast<unsigned>(WholeNumber(reader.Attribute("numFmtId")));
            own[id] = IsDateFormat(reader.Attribute("formatCode"));
        } else if (event == PartReader::Event::start && name == "xf" && insideFormats) {
            const auto id = static_cast<unsigned>(WholeNumber(reader.Attribute("numFmtId")));
            const auto found = own.find(id);
            dates.push_back(found == own.end() ? IsDateFormat(id) : found->second);
        }
    }
    return dates;
}

} // namespace importing
