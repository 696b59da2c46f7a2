#include "cli/Classes.h"

#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsPriceJustVou/ClsPriceJustVou.h"

namespace cli {
namespace {

template <class Class>
std::string Transact(host::Environment& environment, std::string_view request, host::HostLogin* login,
                     ModPub::ImportObserver* observer) {
    Class instance(environment, observer);
    return instance.Transact(request, login);
}

} // namespace

const std::vector<ImportClass>& ImportClasses() {
    constexpr std::string_view settings = "ADD, EDIT, EMPTY";
    constexpr std::string_view rows = "ADD, EDIT";
    static const std::vector<ImportClass> classes = {
        {"ClsInvSubject", false, settings, Transact<kovra::ClsInvSubject>},
        {"ClsOppSubject", false, settings, Transact<kovra::ClsOppSubject>},
        {"ClsOppSubjectST", false, settings, Transact<kovra::ClsOppSubjectST>},
        {"ClsKovra", false, rows, Transact<kovra::ClsKovra>},
        {"ClsKovraProof", true, rows, Transact<kovra::ClsKovraProof>},
        {"ClsPriceJustVou", true, "ADD, EMPTY", Transact<kovra::ClsPriceJustVou>},
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
