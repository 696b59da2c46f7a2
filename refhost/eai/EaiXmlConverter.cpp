#include "refhost/eai/EaiXmlConverter.h"

#include "ModPub/XmlText.h"
#include "refhost/eai/FieldText.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace refhost {
namespace {

/// The record's column that belongs to `field`. Throws `host::Error` for a mapping that names no column of the record,
/// and the database's error.
std::size_t ColumnOf(const MappedField& field, const host::Recordset& record, const std::string& mappingName) {
    try {
        return record.FieldIndex(field.column);
    } catch (const host::Error& error) {
        if (error.number() != host::error_number::itemNotFound) {
            throw;
        }
        throw MappingError(mappingName, "记录中没有列" + field.column);
    }
}

/// Turns elements into records (`z:row`) of a saved template.
class RecordWriter {
public:
    RecordWriter(const MappedPart& part, const host::Recordset& columns, const std::string& mappingName) {
        for (const MappedField& field : part.fields) {
            columns_.emplace(field.element, columns.FieldAt(ColumnOf(field, columns, mappingName)).name);
        }
    }

    /// Adds one record of the children of `element`.
    void Add(const host::DOMNode& element) {
        std::vector<std::string_view> written;
        rows_.append("<z:row");
        for (const host::DOMNodePtr& child : element.ChildNodes()) {
            const auto column = columns_.find(child->NodeName());
            if (column == columns_.end() || std::ranges::find(written, column->second) != written.end()) {
                continue;
            }
            ModPub::AppendXmlAttribute(rows_, column->second, child->Text());
            written.push_back(column->second);
        }
        rows_.append("/>");
    }

    /// Puts the records behind those of `document`, in its text: an element that a document creates by a prefixed name
    /// has no namespace on every parser, and what reads records goes by the namespace.
    void WriteTo(host::DOMDocument& document) const {
        if (rows_.empty()) {
            return;
        }
        constexpr std::string_view emptyData = "<rs:data/>";
        constexpr std::string_view dataEnd = "</rs:data>";
        std::string xml = document.Xml();
        if (const std::size_t end = xml.rfind(dataEnd); end != std::string::npos) {
            xml.insert(end, rows_);
        } else if (const std::size_t data = xml.rfind(emptyData); data != std::string::npos) {
            xml.replace(data, emptyData.size(), "<rs:data>" + rows_ + "</rs:data>");
        } else {
            throw host::Error(host::error_number::unspecified, "模板不是保存为XML的记录集。");
        }
        if (!document.LoadXML(xml)) {
            throw host::Error(host::error_number::unspecified, "记录不能写入模板。");
        }
    }

private:
    /// Names of columns by element.
    std::unordered_map<std::string, std::string> columns_;
    std::string rows_;
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
    RecordWriter records(rules.head, columns, rules.name);
    const std::unique_ptr<host::DOMDocument> row = LoadRow(rowXml);
    if (const host::DOMNodePtr element = row->DocumentElement()->SelectSingleNode(rules.head.element)) {
        records.Add(*element);
    }
    records.WriteTo(head);
}

void EaiXmlConverter::FillBody(std::string_view rowXml, std::string_view, host::DOMDocument& body,
                               host::Recordset& columns, std::string_view mapping) {
    const Mapping& rules = mappings_.Get(mapping);
    RecordWriter records(rules.body, columns, rules.name);
    const std::unique_ptr<host::DOMDocument> row = LoadRow(rowXml);
    for (const host::DOMNodePtr& element :
         row->DocumentElement()->SelectNodes(rules.body.element + "/" + rules.body.rowElement)) {
        records.Add(*element);
    }
    records.WriteTo(body);
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

std::unique_ptr<host::DOMDocument> EaiXmlConverter::LoadRow(std::string_view rowXml) {
    std::unique_ptr<host::DOMDocument> row = environment_.CreateDOMDocument();
    if (!row->LoadXML(rowXml)) {
        throw host::Error(host::error_number::unspecified, "单据不是格式正确的XML。");
    }
    return row;
}

} // namespace refhost
