#pragma once

#include "host/Environment.h"

#include <memory>
#include <string>
#include <string_view>

namespace refhost {

/// The head record of a voucher, as the voucher components hand it around.
class VouchData : public host::RsXmlHelper::VouchData {
public:
    /// @param document in the ADO persistence layout; its first record is the head
    VouchData(host::Environment& environment, const host::DOMDocument& document);

    /// The text of a field; empty when the head has none.
    std::string Text(std::string_view field) const;

private:
    std::unique_ptr<host::DOMDocument> document_;
};

} // namespace refhost
