#pragma once

#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubjectST/ClsOppSubjectST.h"

#include <string>
#include <vector>

namespace test {

/// A class that answers requests with the common frame in its common wording.
struct FrameClass {
    const char* name;
    /// Calls `Transact` of one instance that many times.
    std::vector<std::string> (*calls)(host::Environment& environment, const std::string& request,
                                      host::HostLogin* login, int times);
};

template <class Class>
std::vector<std::string> Calls(host::Environment& environment, const std::string& request, host::HostLogin* login,
                               int times) {
    Class instance(environment);
    std::vector<std::string> results;
    for (int call = 0; call < times; ++call) {
        results.push_back(instance.Transact(request, login));
    }
    return results;
}

inline constexpr FrameClass inventorySettings{"ClsInvSubject", Calls<kovra::ClsInvSubject>};
inline constexpr FrameClass oppositeSettings{"ClsOppSubject", Calls<kovra::ClsOppSubject>};
inline constexpr FrameClass standardCostSettings{"ClsOppSubjectST", Calls<kovra::ClsOppSubjectST>};
inline constexpr FrameClass openingBalances{"ClsKovra", Calls<kovra::ClsKovra>};
inline constexpr FrameClass provisions{"ClsKovraProof", Calls<kovra::ClsKovraProof>};

} // namespace test
