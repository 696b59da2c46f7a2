#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ModPub/ImportRows.h"
#include "ModPub/TransactFrame.h"

namespace kovra {

std::string ClsPriceJustVou::Transact(std::string_view sXml, host::HostLogin* login) {
    const auto importRows = [this](const host::DOMNodeList& rows) {
        return ModPub::ImportRows(state_, rows, [this](const host::DOMNode& row) { ImportRow(row); });
    };
    return ModPub::RunTransact(
        state_,
        {
            .texts = {.notParsed = "解析XML时发生错误，请检查XML参数格式",
                      .noRoot = "qxinterface节点不存在",
                      .unsupported = "本模块暂不提供此功能"},
            .testsRootFirst = true,
            .connectionString = [this] { return state_.login->ConnectionString(); },
            .operations =
                {
                    ModPub::RowsOperation(state_, "ADD", importRows),
                    // The upper-cased operation never equals "Edit": callers know that "EDIT" gets 710.
                    ModPub::RowsOperation(state_, "Edit", importRows),
                    {"EMPTY", [](const host::DOMNode&) { return std::string(); }},
                },
        },
        sXml, login);
}

void ClsPriceJustVou::ImportRow(const host::DOMNode&) {
    throw host::Error(host::error_number::unspecified, "Rows are not imported yet.");
}

} // namespace kovra
