#include "refhost/eai/MappingStore.h"

#include "Mappings.h"

#include <array>
#include <utility>

namespace refhost {
namespace {

/// The mappings that come with the program.
const std::array<std::pair<std::string_view, std::string_view>, 2> shippedMappings = {{
    {"EaiProof.Xml", mappings::EaiProof},
    {"StoreInOutXmlRs.Xml", mappings::StoreInOutXmlRs},
}};

} // namespace

const Mapping& MappingStore::Get(std::string_view name) {
    const std::lock_guard lock(mutex_);
    auto found = mappings_.find(name);
    if (found == mappings_.end()) {
        std::string key(name);
        Mapping mapping = Mapping::Parse(name, ReadText(key), environment_);
        found = mappings_.emplace(std::move(key), std::move(mapping)).first;
    }
    return found->second;
}

std::shared_ptr<const ResolvedPart> MappingStore::Resolve(const Mapping& mapping, const MappedPart& part,
                                                          const host::Recordset& records) {
    const std::lock_guard lock(mutex_);
    std::shared_ptr<const ResolvedPart>& resolved = resolved_[&part];
    if (!resolved || !resolved->IsOver(records)) {
        resolved = std::make_shared<ResolvedPart>(part, records, mapping.name);
    }
    return resolved;
}

std::string MappingStore::ReadText(const std::string& name) const {
    // A name is never a way out of the folder of mappings.
    if (name.find_first_of("/\\") == std::string::npos) {
        try {
            if (std::optional<std::string> own = ownFiles_(name)) {
                return *std::move(own);
            }
        } catch (const std::exception& error) {
            throw MappingError(name, error.what());
        }
        for (const auto& [shipped, text] : shippedMappings) {
            if (shipped == name) {
                return std::string(text);
            }
        }
    }
    throw MappingError(name, "没有这个文件");
}

} // namespace refhost
