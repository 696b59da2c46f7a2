#pragma once

#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsPriceJustVou/ClsPriceJustVou.h"

#include <string>
#include <vector>

namespace test {

/// The error results of the frame, as a class words them.
struct FrameErrors {
    const char* notParsed;
    const char* noRoot;
    const char* notOffered;
};

inline constexpr FrameErrors commonErrors{
    R"(<error code="100" dsc="解析XML时发生错误,请你检查XML参数格式"/>)",
    R"(<error code="101" dsc="qxinterface结点不存在"/>)",
    R"(<error code="710" dsc="本模块暂不提供此功能！"/>)",
};

inline constexpr FrameErrors priceErrors{
    R"(<error code="100" dsc="解析XML时发生错误，请检查XML参数格式"/>)",
    R"(<error code="101" dsc="qxinterface节点不存在"/>)",
    R"(<error code="710" dsc="本模块暂不提供此功能"/>)",
};

/// One of the classes, as the frame's tests see it.
struct FrameClass {
    const char* name;
    /// Calls `Transact` of one instance that many times.
    std::vector<std::string> (*calls)(host::Environment& environment, const std::string& request,
                                      host::HostLogin* login, int times);
    FrameErrors errors = commonErrors;
    /// What is asked of the helper for a request without root element.
    std::vector<std::string> askedWithoutRoot = {"GetAttr", "MakeErrorResult"};
    /// Operations, each in several letter cases, that import rows.
    std::vector<std::string> operations = {"ADD", "add", "Add", "EDIT", "edit", "Edit"};
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

inline FrameClass InventorySettings() { return {"ClsInvSubject", Calls<kovra::ClsInvSubject>}; }
inline FrameClass OppositeSettings() { return {"ClsOppSubject", Calls<kovra::ClsOppSubject>}; }
inline FrameClass StandardCostSettings() { return {"ClsOppSubjectST", Calls<kovra::ClsOppSubjectST>}; }
inline FrameClass OpeningBalances() { return {"ClsKovra", Calls<kovra::ClsKovra>}; }
inline FrameClass Provisions() { return {"ClsKovraProof", Calls<kovra::ClsKovraProof>}; }
/// It looks for the root before it reads the row tag, and never takes "EDIT".
inline FrameClass PriceAdjustments() {
    return {"ClsPriceJustVou", Calls<kovra::ClsPriceJustVou>, priceErrors, {"MakeErrorResult"}, {"ADD", "add", "Add"}};
}

} // namespace test
