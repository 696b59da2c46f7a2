#include "refhost/ia/RsXmlHelper.h"

#include "refhost/ia/VouchData.h"

namespace refhost {

std::unique_ptr<host::DOMDocument> RsXmlHelper::RecordsetToXml(host::Recordset& recordset) {
    std::unique_ptr<host::DOMDocument> document = environment_.CreateDOMDocument();
    recordset.Save(*document);
    return document;
}

std::unique_ptr<host::RsXmlHelper::VouchData> RsXmlHelper::XmlToVouchData(host::DOMDocument& document) {
    return std::make_unique<refhost::VouchData>(environment_, document);
}

} // namespace refhost
