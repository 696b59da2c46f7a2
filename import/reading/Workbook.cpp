#include "import/reading/Workbook.h"

#include "import/reading/PartReader.h"
#include "import/reading/SharedStrings.h"
#include "import/reading/SheetTable.h"
#include "import/reading/Styles.h"
#include "import/reading/UnreadableFile.h"

#include <map>

namespace importing {
namespace {

/// What a part points to, and what kind of thing that is: the last word of the relationship's type.
struct Relationship {
    std::string kind;
    std::string target;
};

std::string FolderOf(const std::string& part) {
    const std::size_t slash = part.rfind('/');
    return slash == std::string::npos ? std::string() : part.substr(0, slash + 1);
}

/// The name of the part that `target`, seen from a part in `folder`, means.
std::string PartName(std::string folder, std::string target) {
    if (target.starts_with('/')) {
        return target.substr(1);
    }
    constexpr std::string_view up = "../";
    while (target.starts_with(up) && !folder.empty()) {
        target.erase(0, up.size());
        folder.pop_back();
        folder = FolderOf(folder);
    }
    return folder + target;
}

/// The relationships of `part` by their ids; those of the package when `part` is empty.
std::map<std::string, Relationship> ReadRelationships(Archive& archive, const std::string& part) {
    const std::string folder = FolderOf(part);
    std::map<std::string, Relationship> relationships;
    PartReader reader(archive, folder + "_rels/" + part.substr(folder.size()) + ".rels");
    for (auto event = reader.Next(); event != PartReader::Event::none; event = reader.Next()) {
        if (event == PartReader::Event::start && reader.Name() == "Relationship") {
            const std::string id(reader.Attribute("Id"));
            const std::string type(reader.Attribute("Type"));
            relationships[id] = {type.substr(type.rfind('/') + 1),
                                 PartName(folder, std::string(reader.Attribute("Target")))};
        }
    }
    return relationships;
}

/// The part that `relationships` name as being of `kind`; empty when there is none.
std::string PartOfKind(const std::map<std::string, Relationship>& relationships, std::string_view kind) {
    for (const auto& [id, relationship] : relationships) {
        if (relationship.kind == kind) {
            return relationship.target;
        }
    }
    return {};
}

} // namespace

Workbook::Workbook(const std::string& path, ArchiveBounds bounds) : archive_(path, bounds) {
    if (!archive_.Has("_rels/.rels")) {
        throw UnreadableFile({message::notASpreadsheet, {path}});
    }
    const std::string part = PartOfKind(ReadRelationships(archive_, {}), "officeDocument");
    if (part.empty() || !archive_.Has(part)) {
        throw UnreadableFile({message::notASpreadsheet, {path}});
    }
    const std::map<std::string, Relationship> relationships = ReadRelationships(archive_, part);
    {
        PartReader reader(archive_, part);
        for (auto event = reader.Next(); event != PartReader::Event::none; event = reader.Next()) {
            if (event != PartReader::Event::start) {
                continue;
            }
            if (reader.Name() == "workbookPr" && reader.IsTrue("date1904")) {
                dateSystem_ = DateSystem::from1904;
            } else if (reader.Name() == "sheet") {
                const auto found = relationships.find(std::string(reader.Attribute("id")));
                if (found != relationships.end() && found->second.kind == "worksheet") {
                    const std::string_view state = reader.Attribute("state");
                    const bool hidden = state == "hidden" || state == "veryHidden";
                    sheets_.push_back({std::string(reader.Attribute("name")), hidden, found->second.target});
                }
            }
        }
    }
    if (sheets_.empty()) {
        throw UnreadableFile({message::noSheet, {}});
    }
    if (const std::string strings = PartOfKind(relationships, "sharedStrings"); !strings.empty()) {
        strings_ = ReadSharedStrings(archive_, strings);
    }
    if (const std::string styles = PartOfKind(relationships, "styles"); !styles.empty()) {
        dateStyles_ = ReadDateStyles(archive_, styles);
    }
}

std::unique_ptr<Table> Workbook::Open(std::size_t sheet) {
    return std::make_unique<SheetTable>(archive_, sheets_.at(sheet).part,
                                        SheetTable::Shared{strings_, dateStyles_, dateSystem_});
}

} // namespace importing
