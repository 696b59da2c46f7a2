#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ModPub/TransactFrame.h"

namespace kovra {

std::string ClsPriceJustVou::Transact(std::string_view sXml, host::HostLogin* login) {
    return ModPub::RunTransact(
        state_,
        [this] {
            const auto importVouchers = [this](const host::DOMNode& root) {
                return ImportVouchers(root.SelectNodes(state_.rowTag));
            };
            return ModPub::FrameVariation{
                .texts = {.notParsed = "解析XML时发生错误，请检查XML参数格式",
                          .noRoot = "qxinterface节点不存在",
                          .unsupported = "本模块暂不提供此功能"},
                .testsRootFirst = true,
                .beforeConnection =
                    [this] { voucherContext_ = state_.environment.CreateIaVoucherService()->Context(*state_.login); },
                .connectionString = [this] { return state_.login->ConnectionString(); },
                .operations =
                    {
                        {"ADD", importVouchers},
                        // The upper-cased operation never equals "Edit": callers know that "EDIT" gets 710.
                        {"Edit", importVouchers},
                        {"EMPTY", [](const host::DOMNode&) { return std::string(); }},
                    },
            };
        },
        sXml, login);
}

} // namespace kovra
