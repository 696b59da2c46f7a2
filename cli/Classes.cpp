#include "cli/Classes.h"

#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsKovraProof/ProvisionDoc.h"
#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "os/Variable.h"
#include "refhost/Environment.h"
#include "refhost/eai/MappingStore.h"

namespace cli {
namespace {

template <class Class>
std::string Transact(host::Environment& environment, std::string_view request, host::HostLogin* login,
                     ModPub::ImportObserver* observer) {
    Class instance(environment, observer);
    return instance.Transact(request, login);
}

template <class Class> std::optional<ModPub::RequestFields> Fields() { return Class::Fields(); }

std::vector<std::string> Elements(const refhost::MappedPart& part) {
    std::vector<std::string> names;
    for (const refhost::MappedField& field : part.fields) {
        names.push_back(field.element);
    }
    return names;
}

/// What provisions have is the mapping's to say.
std::optional<ModPub::RequestFields> Provisions() {
    if (os::Variable("KOVRA_MAPPINGS")) {
        return std::nullopt;
    }
    refhost::Environment environment;
    refhost::MappingStore store(environment, [](const std::string&) { return std::nullopt; });
    const refhost::Mapping& mapping = store.Get(kovra::provisionMapping);
    return ModPub::RequestFields{.header = Elements(mapping.head), .entry = Elements(mapping.body)};
}

} // namespace

const std::vector<ImportClass>& ImportClasses() {
    constexpr std::string_view settings = "ADD, EDIT, EMPTY";
    constexpr std::string_view rows = "ADD, EDIT";
    static const std::vector<ImportClass> classes = {
        {"ClsInvSubject", false, settings, Transact<kovra::ClsInvSubject>, Fields<kovra::ClsInvSubject>},
        {"ClsOppSubject", false, settings, Transact<kovra::ClsOppSubject>, Fields<kovra::ClsOppSubject>},
        {"ClsOppSubjectST", false, settings, Transact<kovra::ClsOppSubjectST>, Fields<kovra::ClsOppSubjectST>},
        {"ClsKovra", false, rows, Transact<kovra::ClsKovra>, Fields<kovra::ClsKovra>},
        {"ClsKovraProof", true, rows, Transact<kovra::ClsKovraProof>, Provisions},
        {"ClsPriceJustVou", true, "ADD, EMPTY", Transact<kovra::ClsPriceJustVou>, Fields<kovra::ClsPriceJustVou>},
    };
    return classes;
}

std::string ClassNames() {
    std::string names;
    for (const ImportClass& importClass : ImportClasses()) {
        names.append(names.empty() ? "" : ", ").append(importClass.name);
    }
    return names;
}

} // namespace cli
