#include "import/run/UnitHashes.h"

#include "import/fields/KeyPart.h"
#include "import/file/Sha256.h"

#include <map>
#include <string_view>

namespace importing {
namespace {

std::string HashOf(const Outcome& outcome, const Unit& unit) {
    Sha256 hash;
    for (const RowOutcome* const each : unit.rows) {
        // By the class's fields, so that the order of the file's columns does not matter.
        for (const Field& field : outcome.classFields->fields) {
            hash.Add(ValueOf(outcome, each->row, field.element));
            hash.Add(std::string_view(&partEnd, 1));
        }
    }
    return hash.Finish();
}

} // namespace

std::vector<std::string> UnitHashes(const Outcome& outcome, const std::vector<Unit>& units) {
    std::vector<std::string> hashes;
    std::map<std::string, std::size_t> seen;
    for (const Unit& unit : units) {
        std::string hash = HashOf(outcome, unit);
        const std::size_t before = seen[hash]++;
        hashes.push_back(before == 0 ? std::move(hash) : hash + "#" + std::to_string(before));
    }
    return hashes;
}

} // namespace importing
