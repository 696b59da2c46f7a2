#include "cli/ClassFields.h"

#include "ClsKovraProof/ProvisionDoc.h"
#include "ClsOppSubjectST/StandardCostSetting.h"
#include "ModPub/Text.h"
#include "os/Variable.h"
#include "refhost/Environment.h"
#include "refhost/eai/MappingStore.h"

#include <algorithm>
#include <numeric>

namespace cli {
namespace {

/// `prefix` followed by the numbers 1 to 10.
void AddNumbered(std::vector<std::string>& names, std::string_view prefix) {
    for (int number = 1; number <= 10; ++number) {
        names.push_back(std::string(prefix) + std::to_string(number));
    }
}

ClassFields InventorySettings() {
    return {.row = {"cWhCode", "cInvCCode", "cInvCode", "cInvHead", "cDifHead", "cOutHead", "cEnDispHead", "czyHead"}};
}

ClassFields OppositeSettings() {
    return {.row = {"cRdCode", "cInvcCode", "cInvCode", "cDepCode", "citem_class", "citemcode", "cItem_class",
                    "cItemCode", "cItemCName", "cName", "cOppHead", "cEstHead"}};
}

ClassFields StandardCostSettings() {
    ClassFields fields;
    for (const kovra::StandardCostColumn& column : kovra::standardCostColumns) {
        fields.row.emplace_back(column.name);
    }
    return fields;
}

ClassFields OpeningBalances() {
    ClassFields fields{.row = {"cWhCode", "cInvCode", "cBatchCode", "iQuantity", "iCost", "iPrice", "dVouDate",
                               "dMadeDate", "dVDate", "cItem_class", "cItemCode", "cItemCName", "cName", "cDefine4",
                               "cDefine6", "cDefine36", "cDefine37"},
                       .othersAreColumns = true};
    AddNumbered(fields.row, "cFree");
    return fields;
}

void AddElements(std::vector<std::string>& names, const refhost::MappedPart& part) {
    for (const refhost::MappedField& field : part.fields) {
        names.push_back(field.element);
    }
}

ClassFields Provisions() {
    refhost::Environment environment;
    refhost::MappingStore store(environment, [](const std::string&) { return std::nullopt; });
    const refhost::Mapping& mapping = store.Get(kovra::provisionMapping);
    ClassFields fields;
    AddElements(fields.header, mapping.head);
    AddElements(fields.entry, mapping.body);
    return fields;
}

ClassFields PriceVouchers() {
    ClassFields fields{.row = {},
                       .header = {"ID", "cMaker", "cAccounter", "dCJVDate", "cMemo"},
                       .entry = {"cInvCode", "cWhCode", "iCJVACost"}};
    AddNumbered(fields.entry, "cFree");
    AddNumbered(fields.entry, "cfree");
    return fields;
}

/// How many letters have to be changed, added or left out to make one name of the other.
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::optional<ClassFields> FieldsOf(std::string_view className) {
    if (className == "ClsInvSubject") {
        return InventorySettings();
    }
    if (className == "ClsOppSubject") {
        return OppositeSettings();
    }
    if (className == "ClsOppSubjectST") {
        return StandardCostSettings();
    }
    if (className == "ClsKovra") {
        return OpeningBalances();
    }
    if (className == "ClsKovraProof" && !os::Variable("KOVRA_MAPPINGS")) {
        return Provisions();
    }
    return className == "ClsPriceJustVou" ? std::optional(PriceVouchers()) : std::nullopt;
}

std::string Nearest(std::string_view name, const std::vector<std::string>& names) {
    constexpr std::size_t most = 2;
    const std::string folded = ModPub::UpperCase(name);
    std::string nearest;
    std::size_t best = most + 1;
    for (const std::string& candidate : names) {
        const std::string upper = ModPub::UpperCase(candidate);
        // Short names are near to too many others.
        const std::size_t distance = Distance(folded, upper);
        if (distance < best && distance * 3 < upper.size()) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace cli
