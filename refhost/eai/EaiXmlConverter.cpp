#include "refhost/eai/EaiXmlConverter.h"

#include "refhost/eai/FieldText.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace refhost {
namespace {

/// Turns elements into records (`z:row`) of a saved template.
class RecordWriter {
public:
    RecordWriter(std::shared_ptr<const ResolvedPart> columns, host::DOMDocument& document)
        : columns_(std::move(columns)), document_(document) {}

    /// Adds one record of the children of `element`.
    void Add(const host::DOMNode& element) {
        if (!data_) {
            data_ = document_.SelectSingleNode("/xml/rs:data");
            if (!data_) {
                throw host::Error(host::error_number::unspecified, "模板不是保存为XML的记录集。");
            }
        }
        // By its namespace: what reads records goes by it, on every parser.
        const host::DOMNodePtr row = document_.CreateElementNS("z:row", "#RowsetSchema");
        set_.clear();
        element.VisitChildren([&](const host::DOMNode& child) {
            const std::string* const column = columns_->ColumnOf(child.NodeName());
            if (column != nullptr && std::ranges::find(set_, *column) == set_.end()) {
                row->SetAttribute(*column, child.Text());
                set_.emplace_back(*column);
            }
        });
        data_->AppendChild(*row);
    }

private:
    std::shared_ptr<const ResolvedPart> columns_;
    host::DOMDocument& document_;
    host::DOMNodePtr data_;
    /// The columns that the present record has a value in.
    std::vector<std::string_view> set_;
};

/// Writes a mapping's fields of the current record as children of an element.
class ElementWriter {
public:
    ElementWriter(host::DOMDocument& document, const MappedPart& part, const host::Recordset& record,
                  const std::string& mappingName)
        : document_(document), part_(part), record_(record) {
        for (const MappedField& field : part.fields) {
            columns_.push_back(ColumnOf(field, record, mappingName));
        }
    }

    void WriteTo(host::DOMNode& element) const {
        for (std::size_t field = 0; field < columns_.size(); ++field) {
            if (const std::optional<std::string> text = FieldText(record_.FieldValue(columns_[field]))) {
                const host::DOMNodePtr child = document_.CreateElement(part_.fields[field].element);
                child->SetText(*text);
                element.AppendChild(*child);
            }
        }
    }

private:
    host::DOMDocument& document_;
    const MappedPart& part_;
    const host::Recordset& record_;
    std::vector<std::size_t> columns_;
};

} // namespace

void EaiXmlConverter::FillHead(std::string_view rowXml, std::string_view, host::DOMDocument& head,
                               host::Recordset& columns, std::string_view mapping) {
    const Mapping& rules = mappings_.Get(mapping);
    RecordWriter records(mappings_.Resolve(rules, rules.head, columns), head);
    if (const host::DOMNodePtr element = RowElement(rowXml)->SelectSingleNode(rules.head.element)) {
        records.Add(*element);
    }
}

void EaiXmlConverter::FillBody(std::string_view rowXml, std::string_view, host::DOMDocument& body,
                               host::Recordset& columns, std::string_view mapping) {
    const Mapping& rules = mappings_.Get(mapping);
    RecordWriter records(mappings_.Resolve(rules, rules.body, columns), body);
    for (const host::DOMNodePtr& element :
         RowElement(rowXml)->SelectNodes(rules.body.element + "/" + rules.body.rowElement)) {
        records.Add(*element);
    }
}

void EaiXmlConverter::HeadToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                                host::Recordset& head) {
    const Mapping& rules = mappings_.Get(mapping);
    const host::DOMNodePtr headElement = document.CreateElement(rules.head.element);
    ElementWriter(document, rules.head, head, rules.name).WriteTo(*headElement);
    element.AppendChild(*headElement);
}

void EaiXmlConverter::BodyToXml(host::DOMDocument& document, host::DOMNode& element, std::string_view mapping,
                                host::Recordset& body) {
    const Mapping& rules = mappings_.Get(mapping);
    const ElementWriter writer(document, rules.body, body, rules.name);
    const host::DOMNodePtr bodyElement = document.CreateElement(rules.body.element);
    for (; !body.AtEOF(); body.MoveNext()) {
        const host::DOMNodePtr rowElement = document.CreateElement(rules.body.rowElement);
        writer.WriteTo(*rowElement);
        bodyElement->AppendChild(*rowElement);
    }
    element.AppendChild(*bodyElement);
}

host::DOMNodePtr EaiXmlConverter::RowElement(std::string_view rowXml) {
    if (!row_ || rowXml_ != rowXml) {
        row_.reset();
        std::unique_ptr<host::DOMDocument> row = environment_.CreateDOMDocument();
        if (!row->LoadXML(rowXml)) {
            throw host::Error(host::error_number::unspecified, "单据不是格式正确的XML。");
        }
        rowXml_ = rowXml;
        row_ = std::move(row);
    }
    return row_->DocumentElement();
}

} // namespace refhost
