#pragma once

#include "refhost/eai/Mapping.h"
#include "refhost/eai/ResolvedPart.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace refhost {

/// The mapping files, each read once: converters are made anew for every document. Threads may share a store.
class MappingStore {
public:
    /// Reads a user's own mapping file of the name given; nothing when there is none. Throws std::exception for one
    /// that cannot be read.
    using OwnFiles = std::function<std::optional<std::string>(const std::string& name)>;

    /// @param environment where documents come from; it outlives the store
    /// @param ownFiles asked before the mappings that come with the program
    MappingStore(host::Environment& environment, OwnFiles ownFiles)
        : environment_(environment), ownFiles_(std::move(ownFiles)) {}

    /// The mapping of that name. Throws `host::Error` when there is none or its file is broken.
    const Mapping& Get(std::string_view name);
    /// A part of one of its mappings over the columns of `records`; the same one as long as the columns are the same.
    /// Throws `host::Error` for a mapping that names none of them.
    std::shared_ptr<const ResolvedPart> Resolve(const Mapping& mapping, const MappedPart& part,
                                                const host::Recordset& records);

private:
    std::string ReadText(const std::string& name) const;

    host::Environment& environment_;
    OwnFiles ownFiles_;
    std::mutex mutex_;
    std::map<std::string, Mapping, std::less<>> mappings_;
    std::map<const MappedPart*, std::shared_ptr<const ResolvedPart>> resolved_;
};

} // namespace refhost
