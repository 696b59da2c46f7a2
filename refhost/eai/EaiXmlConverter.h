#pragma once

#include "refhost/eai/MappingStore.h"

#include <memory>
#include <string>
#include <string_view>

namespace refhost {

/// The converter of the reference host, between the elements of a document and the columns of its records. Which
/// element belongs to which column is told by mapping files (`Mapping`).
///
/// Texts go to records as they stand, without conversion: a child element that is missing gives no attribute, an empty
/// one an empty attribute, one that the mapping does not know is left out; of several of one name the first counts.
/// Values go to elements by `FieldText`; Null gives no element, and a column that the mapping does not know is left
/// out. A mapping that names a column the record does not have is an error.
class EaiXmlConverter final : public host::EaiXmlConverter {
public:
    /// @param environment where documents come from; it and `mappings` outlive the converter
    EaiXmlConverter(host::Environment& environment, MappingStore& mappings)
        : environment_(environment), mappings_(mappings) {}

    /// Adds one record for the row's head element, none when the row has no such element. The row's name is not
    /// looked at.
    void FillHead(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& head, host::Recordset& columns,
                  std::string_view mapping) override;
    /// Adds one record for each row element under the row's body element.
    void FillBody(std::string_view rowXml, std::string_view rowTag, host::DOMDocument& body, host::Recordset& columns,
                  std::string_view mapping) override;
    /// Adds the head element with one child for each field.
    void HeadToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& head) override;
    /// Adds the body element with one row element for each record from the current one on.
    void BodyToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                   host::Recordset& body) override;

private:
    /// The row's element. A row is read once, for its head and its body.
    host::DOMNodePtr RowElement(std::string_view rowXml);

    host::Environment& environment_;
    MappingStore& mappings_;
    std::string rowXml_;
    std::unique_ptr<host::DOMDocument> row_;
};

} // namespace refhost
