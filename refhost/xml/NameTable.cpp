#include "refhost/xml/NameTable.h"

#include "host/Error.h"
#include "refhost/xml/MakeReady.h"
#include "refhost/xml/Tree.h"

#include <new>
#include <utility>

namespace refhost::xml {
namespace {

/// A table of some hundred columns has fewer names.
constexpr int manyNames = 4096;

xmlDict* NewDict() {
    MakeReady();
    xmlDict* const dict = xmlDictCreate();
    if (dict == nullptr)
        throw std::bad_alloc();
    return dict;
}

const xmlChar* Bytes(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

/// Names of records begin alike. The factors are such that hardly two fields of a row share a place.
std::size_t PlaceOf(std::string_view name) {
    const auto at = [&](std::size_t index) { return static_cast<unsigned char>(name[index]); };
    return name.empty() ? 0
                        : name.size() + at(name.size() / 3) * 5U + at(name.size() / 2) * 3U + at(name.size() - 1) * 3U;
}

} // namespace

void NameTable::DictDeleter::operator()(xmlDict* dict) const noexcept { xmlDictFree(dict); }

NameTable::NameTable() : dict_(NewDict()) {}

NameTable::NameTable(xmlDict* names) : dict_(names) { xmlDictReference(names); }

const char* NameTable::Get(std::string_view name) {
    std::string_view& latest = latest_[PlaceOf(name) % latest_.size()];
    if (latest != name || name.empty())
        latest = {IsPlainQualifiedName(name) ? Keep(name) : Checked(name), name.size()};
    return latest.data();
}

const char* NameTable::GetPlain(std::string_view text) {
    std::string_view& latest = latestPlain_[PlaceOf(text) % latestPlain_.size()];
    if (latest != text) {
        if (!IsPlainName(text))
            return nullptr;
        latest = {Keep(text), text.size()};
    }
    return latest.data();
}

const char* NameTable::Keep(std::string_view name) {
    const auto* kept =
        xmlDictLookup(dict_.get(), reinterpret_cast<const xmlChar*>(name.data()), static_cast<int>(name.size()));
    if (kept == nullptr)
        throw std::bad_alloc();
    return reinterpret_cast<const char*>(kept);
}

const char* NameTable::Checked(std::string_view name) {
    if (const auto known = checked_.find(name); known != checked_.end())
        return known->second;
    std::string text(name);
    const bool hasNul = name.find('\0') != std::string_view::npos;
    if (hasNul || xmlValidateQName(Bytes(text.c_str()), 0) != 0)
        throw host::Error(host::error_number::unspecified, "'" + text + "' is not a valid XML name.");
    const char* const result = Keep(text);
    checked_.emplace(std::move(text), result);
    return result;
}

bool NameTable::HasMany() const noexcept { return xmlDictSize(dict_.get()) > manyNames; }

} // namespace refhost::xml
