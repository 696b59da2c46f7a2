#pragma once

#include "refhost/ia/RsXmlHelper.h"
#include "refhost/ia/VouchData.h"
#include "server/adapters/ComEnvironment.h"
#include "server/inproc/Automation.h"

#include <memory>

namespace refhost::com {

/// Voucher data on its way from `RsXmlHelper` to the cost-adjustment component.
class VouchDataObject final : public server::Automation<VouchDataObject> {
public:
    explicit VouchDataObject(std::unique_ptr<host::RsXmlHelper::VouchData> data) noexcept : data_(std::move(data)) {}

    /// The data in `argument`. Throws 91 for Nothing, 13 for another object.
    static server::ComPtr<VouchDataObject> Of(const VARIANT& argument);
    host::RsXmlHelper::VouchData& data() noexcept { return *data_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    /// The text of a field of the voucher's head; empty when the head has none.
    server::VariantHolder Text(const server::Arguments& arguments);

    static constexpr server::Method<VouchDataObject> methods[] = {{L"Text", 1, 1, &VouchDataObject::Text}};

private:
    std::unique_ptr<host::RsXmlHelper::VouchData> data_;
};

/// `KovraHost.RsXmlHelper`.
class RsXmlHelperObject final : public server::Automation<RsXmlHelperObject> {
public:
    server::VariantHolder RecordsetToXml(const server::Arguments& arguments);
    server::VariantHolder XmlToVouchData(const server::Arguments& arguments);

    static constexpr server::Method<RsXmlHelperObject> methods[] = {
        {L"RecordsetToXml", 1, 1, &RsXmlHelperObject::RecordsetToXml},
        {L"XmlToVouchData", 1, 1, &RsXmlHelperObject::XmlToVouchData},
    };

private:
    server::ComEnvironment environment_;
    RsXmlHelper helper_{environment_};
};

} // namespace refhost::com
