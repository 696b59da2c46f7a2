#include "server/adapters/ComEaiHelper.h"

#include "server/adapters/ObjectArguments.h"
#include "server/adapters/ProgIds.h"
#include "server/com/DispatchObject.h"

namespace server {

namespace {

class ComEaiHelper final : public host::EaiHelper {
public:
    ComEaiHelper() : helper_(DispatchObject::Create(progid::eaiHelper)) {}

    std::string GetAttr(host::DOMNode* element, std::string_view name) override {
        return ToText(helper_.Call(L"GetAttr", ObjectReference(element), VariantHolder(name)).Get());
    }
    std::string GetChildText(const host::DOMNode* node, std::string_view name) override {
        return ToText(helper_.Call(L"GetChildText", ByValue(node), VariantHolder(name)).Get());
    }
    std::string MakeErrorResult(std::string_view code, std::string_view message, std::string_view detail) override {
        return ToText(
            helper_.Call(L"MakeErrorResult", VariantHolder(code), VariantHolder(message), UnreadReference(detail))
                .Get());
    }
    std::string MakeResultDoc(std::string_view docid, std::string_view proc) override {
        return ToText(helper_.Call(L"MakeResultDoc", VariantHolder(docid), UnreadReference(proc)).Get());
    }
    void AddResultItem(host::DOMDocument& resultDocument, std::string_view key, long code,
                       std::string_view description) override {
        constexpr int noFlag = 0;
        constexpr std::string_view empty;
        helper_.Call(L"AddResultItem", ObjectReference(resultDocument), VariantHolder(key),
                     VariantHolder(static_cast<int>(code)), VariantHolder(description), VariantHolder(noFlag),
                     UnreadReference(empty), UnreadReference(empty), UnreadReference(empty), UnreadReference(empty));
    }

private:
    DispatchObject helper_;
};

} // namespace

std::unique_ptr<host::EaiHelper> MakeEaiHelper() { return std::make_unique<ComEaiHelper>(); }

} // namespace server
