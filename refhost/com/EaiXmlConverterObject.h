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
    template <auto fill> server::VariantHolder Fill(const server::Arguments& arguments);
    /// The element to write into, the mapping file, the records, and two Variants that stay as they are.
    template <auto write> server::VariantHolder ToXml(const server::Arguments& arguments);

    static constexpr server::Method<EaiXmlConverterObject> methods[] = {
        {L"FillHead", 6, 6, &EaiXmlConverterObject::Fill<&EaiXmlConverter::FillHead>},
        {L"FillBody", 6, 6, &EaiXmlConverterObject::Fill<&EaiXmlConverter::FillBody>},
        {L"HeadToXml", 5, 5, &EaiXmlConverterObject::ToXml<&EaiXmlConverter::HeadToXml>},
        {L"BodyToXml", 5, 5, &EaiXmlConverterObject::ToXml<&EaiXmlConverter::BodyToXml>},
    };

private:
    server::ComEnvironment environment_;
    EaiXmlConverter converter_;
};

} // namespace refhost::com
