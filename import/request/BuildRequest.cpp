#include "import/request/BuildRequest.h"

#include "ModPub/XmlText.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace importing {
namespace {

class RequestWriter {
public:
    RequestWriter(const ClassFields& classFields, const Columns& columns, std::span<const Row* const> rows)
        : classFields_(classFields), columns_(columns), rows_(rows) {}

    std::string Write(std::string_view docid, std::string_view proc) {
        xml_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<qxinterface";
        const bool documents = !classFields_.document.empty();
        ModPub::AppendXmlAttribute(xml_, "roottag", documents ? "document" : "row");
        ModPub::AppendXmlAttribute(xml_, "docid", docid);
        ModPub::AppendXmlAttribute(xml_, "proc", proc);
        xml_.append(">\n");
        documents ? WriteDocuments() : WriteRows();
        return std::move(xml_.append("</qxinterface>\n"));
    }

private:
    void WriteRow(const Row& row) {
        xml_.append("<row>");
        WriteFields(row, Place::row);
        xml_.append("</row>\n");
    }

    void WriteRows() {
        for (const Row* const row : rows_) {
            WriteRow(*row);
        }
    }

    /// Writes the rows with one number together, in the order of the first of each.
    void WriteDocuments() {
        std::vector<std::vector<const Row*>> documents;
        std::map<std::string_view, std::size_t> numbers;
        const std::size_t column = columns_.Find(classFields_.document).value();
        for (const Row* const row : rows_) {
            const auto [number, isNew] = numbers.try_emplace(row->values[column], documents.size());
            if (isNew) {
                documents.emplace_back();
            }
            documents[number->second].push_back(row);
        }
        for (const std::vector<const Row*>& rows : documents) {
            xml_.append("<document><header>");
            WriteFields(*rows.front(), Place::header);
            xml_.append("</header><body>\n");
            for (const Row* const row : rows) {
                xml_.append("<entry>");
                WriteFields(*row, Place::entry);
                xml_.append("</entry>\n");
            }
            xml_.append("</body></document>\n");
        }
    }

    void WriteFields(const Row& row, Place place) {
        for (std::size_t column = 0; column < row.values.size(); ++column) {
            const Field* const field = columns_.fields[column];
            if (field == nullptr || field->place != place || row.values[column].empty()) {
                continue;
            }
            WriteElement(field->element, row.values[column]);
            if (!field->alsoElement.empty()) {
                WriteElement(field->alsoElement, row.values[column]);
            }
        }
        for (const FixedElement& fixed : classFields_.fixed) {
            const std::optional<std::size_t> with = columns_.Find(fixed.with);
            if (fixed.place == place && (fixed.with.empty() || (with && !row.values[*with].empty()))) {
                WriteElement(fixed.element, fixed.value);
            }
        }
    }

    void WriteElement(std::string_view name, std::string_view value) {
        std::string doubled;
        for (const char c : value) {
            doubled.append(c == '\'' ? 2 : 1, c);
        }
        xml_.append("<").append(name).append(">");
        ModPub::AppendXmlText(xml_, doubled);
        xml_.append("</").append(name).append(">");
    }

    const ClassFields& classFields_;
    const Columns& columns_;
    std::span<const Row* const> rows_;
    std::string xml_;
};

} // namespace

std::string BuildRequest(const ClassFields& classFields, const Columns& columns, std::span<const Row* const> rows,
                         std::string_view docid, std::string_view proc) {
    return RequestWriter(classFields, columns, rows).Write(docid, proc);
}

std::string BuildRequest(const Sheet& sheet, std::string_view docid, std::string_view proc) {
    std::vector<const Row*> taken;
    for (const Row& row : sheet.rows) {
        if (row.refusals.empty()) {
            taken.push_back(&row);
        }
    }
    return BuildRequest(*sheet.classFields, sheet.columns, taken, docid, proc);
}

} // namespace importing
