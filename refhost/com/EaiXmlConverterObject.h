#pragma once

#include "refhost/eai/EaiXmlConverter.h"
#include "server/adapters/ComEnvironment.h"
#include "server/inproc/Automation.h"

namespace refhost::com {

/// `KovraHost.EaiXmlConverter`, with the mapping files that come with the program.
class EaiXmlConverterObject final : public server::Automation<EaiXmlConverterObject> {
public:
    EaiXmlConverterObject();

    /// The row's XML and name, the records' document, a recordset of the columns, the mapping file, and Nothing.
    server::VariantHolder FillHead(const server::Arguments& arguments);
    server::VariantHolder FillBody(const server::Arguments& arguments);
    /// The element to write into, the mapping file, the records, and two Variants that stay as they are.
    server::VariantHolder HeadToXml(const server::Arguments& arguments);
    server::VariantHolder BodyToXml(const server::Arguments& arguments);

    static constexpr server::Method<EaiXmlConverterObject> methods[] = {
        {L"FillHead", 6, 6, &EaiXmlConverterObject::FillHead},
        {L"FillBody", 6, 6, &EaiXmlConverterObject::FillBody},
        {L"HeadToXml", 5, 5, &EaiXmlConverterObject::HeadToXml},
        {L"BodyToXml", 5, 5, &EaiXmlConverterObject::BodyToXml},
    };

private:
    server::VariantHolder Fill(void (EaiXmlConverter::*fill)(std::string_view, std::string_view, host::DOMDocument&,
                                                             host::Recordset&, std::string_view),
                               const server::Arguments& arguments);
    server::VariantHolder ToXml(void (EaiXmlConverter::*write)(host::DOMDocument&, host::DOMNode&, std::string_view,
                                                               host::Recordset&),
                                const server::Arguments& arguments);

    server::ComEnvironment environment_;
    EaiXmlConverter converter_;
};

} // namespace refhost::com
