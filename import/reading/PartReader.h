#pragma once

#include "import/reading/Archive.h"

#include <exception>
#include <memory>
#include <string>
#include <string_view>

#include <libxml/xmlreader.h>

namespace importing {

/// The XML of one part of an archive, read element by element. Names are local names: the transitional and the strict
/// form of Office Open XML differ in their namespaces alone. A document type is refused, so no entity is ever expanded.
class PartReader {
public:
    /// Throws UnreadableFile when the part is not there.
    PartReader(Archive& archive, std::string part);
    ~PartReader();
    PartReader(const PartReader&) = delete;
    PartReader& operator=(const PartReader&) = delete;

    enum class Event { start, end, text, none };

    /// Goes on to the next start or end of an element or text; `none` at the part's end. An element without content
    /// gives a start and an end. Throws UnreadableFile.
    Event Next();

    /// The element's name, at its start and end.
    std::string_view Name() const;
    /// The text, at a text.
    std::string_view Text() const;
    /// The value of the element's attribute with this local name, at its start; empty when there is none.
    std::string_view Attribute(const char* name);
    /// Whether that attribute says yes, in one of the two ways that xsd:boolean has; a missing one does not.
    bool IsTrue(const char* attribute);
    /// Reads to the end of the element that has just begun.
    void Skip();

private:
    struct Free {
        void operator()(xmlTextReader* reader) const noexcept { xmlFreeTextReader(reader); }
    };
    static int ReadBytes(void* self, char* buffer, int size);

    Archive& archive_;
    std::string part_;
    std::unique_ptr<xmlTextReader, Free> reader_;
    /// What the archive threw; it must not pass through libxml2.
    std::exception_ptr failure_;
    std::string attribute_;
    bool endsAtOnce_ = false;
};

} // namespace importing
