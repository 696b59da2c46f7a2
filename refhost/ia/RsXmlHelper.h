#pragma once

#include "host/Environment.h"

#include <memory>

namespace refhost {

/// Translates recordsets into documents of the ADO persistence layout, and those into voucher data.
class RsXmlHelper : public host::RsXmlHelper {
public:
    /// @param environment where the documents come from; it outlives the helper
    explicit RsXmlHelper(host::Environment& environment) : environment_(environment) {}

    std::unique_ptr<host::DOMDocument> RecordsetToXml(host::Recordset& recordset) override;
    std::unique_ptr<VouchData> XmlToVouchData(host::DOMDocument& document) override;

private:
    host::Environment& environment_;
};

} // namespace refhost
