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
std::string Transact(host::Environment& environment, std::string_view request, host::HostLogin* login) {
    Class instance(environment);
    return instance.Transact(request, login);
}

} // namespace

const std::vector<ImportClass>& ImportClasses() {
    static const std::vector<ImportClass> classes = {
        {"ClsInvSubject", Transact<kovra::ClsInvSubject>},     {"ClsOppSubject", Transact<kovra::ClsOppSubject>},
        {"ClsOppSubjectST", Transact<kovra::ClsOppSubjectST>}, {"ClsKovra", Transact<kovra::ClsKovra>},
        {"ClsKovraProof", Transact<kovra::ClsKovraProof>},     {"ClsPriceJustVou", Transact<kovra::ClsPriceJustVou>},
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
