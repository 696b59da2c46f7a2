#pragma once

#include "refhost/eai/EaiHelper.h"
#include "server/inproc/Automation.h"

namespace refhost::com {

/// `KovraHost.EaiHelper`.
class EaiHelperObject final : public server::Automation<EaiHelperObject> {
public:
    server::VariantHolder GetAttr(const server::Arguments& arguments);
    server::VariantHolder GetChildText(const server::Arguments& arguments);
    server::VariantHolder MakeErrorResult(const server::Arguments& arguments);
    server::VariantHolder MakeResultDoc(const server::Arguments& arguments);
    /// Document, key, code, description, flag, and four further texts. A flag other than 0 and texts that are not empty
    /// become the attributes `flag` and `u1` to `u4`.
    server::VariantHolder AddResultItem(const server::Arguments& arguments);

    static constexpr server::Method<EaiHelperObject> methods[] = {
        {L"GetAttr", 2, 2, &EaiHelperObject::GetAttr},
        {L"GetChildText", 2, 2, &EaiHelperObject::GetChildText},
        {L"MakeErrorResult", 3, 3, &EaiHelperObject::MakeErrorResult},
        {L"MakeResultDoc", 2, 2, &EaiHelperObject::MakeResultDoc},
        {L"AddResultItem", 9, 9, &EaiHelperObject::AddResultItem},
    };

private:
    refhost::EaiHelper helper_;
};

} // namespace refhost::com
