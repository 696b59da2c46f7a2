#include "import/reading/PartReader.h"

#include "import/reading/UnreadableFile.h"

#include <utility>

namespace importing {
namespace {

std::string_view View(const xmlChar* text) {
    return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

} // namespace

PartReader::PartReader(Archive& archive, std::string part) : archive_(archive), part_(std::move(part)) {
    archive_.Open(part_);
    // Nothing outside the part is looked for, and libxml2's own bounds on depth and text stay.
    reader_.reset(xmlReaderForIO(ReadBytes, nullptr, this, nullptr, nullptr,
                                 XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (!reader_) {
        throw std::bad_alloc();
    }
}

PartReader::~PartReader() = default;

int PartReader::ReadBytes(void* self, char* buffer, int size) {
    auto& reader = *static_cast<PartReader*>(self);
    try {
        return static_cast<int>(reader.archive_.Read(buffer, static_cast<std::size_t>(size)));
    } catch (...) {
        reader.failure_ = std::current_exception();
        return -1;
    }
}

PartReader::Event PartReader::Next() {
    if (std::exchange(endsAtOnce_, false)) {
        return Event::end;
    }
    while (true) {
        const int read = xmlTextReaderRead(reader_.get());
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        if (read < 0) {
            throw UnreadableFile({message::partBroken, {part_}});
        }
        if (read == 0) {
            return Event::none;
        }
        switch (xmlTextReaderNodeType(reader_.get())) {
        case XML_READER_TYPE_ELEMENT:
            endsAtOnce_ = xmlTextReaderIsEmptyElement(reader_.get()) == 1;
            return Event::start;
        case XML_READER_TYPE_END_ELEMENT:
            return Event::end;
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_CDATA:
        case XML_READER_TYPE_WHITESPACE:
        case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
            return Event::text;
        case XML_READER_TYPE_DOCUMENT_TYPE:
            throw UnreadableFile({message::documentType, {part_}});
        default:
            break;
        }
    }
}

std::string_view PartReader::Name() const { return View(xmlTextReaderConstLocalName(reader_.get())); }

std::string_view PartReader::Text() const { return View(xmlTextReaderConstValue(reader_.get())); }

std::string_view PartReader::Attribute(const char* name) {
    attribute_.clear();
    for (int more = xmlTextReaderMoveToFirstAttribute(reader_.get()); more == 1;
         more = xmlTextReaderMoveToNextAttribute(reader_.get())) {
        if (Name() == name) {
            attribute_ = View(xmlTextReaderConstValue(reader_.get()));
            break;
        }
    }
    xmlTextReaderMoveToElement(reader_.get());
    return attribute_;
}

bool PartReader::IsTrue(const char* attribute) {
    const std::string_view value = Attribute(attribute);
    return value == "1" || value == "true";
}

void PartReader::Skip() {
    for (int depth = 1; depth > 0;) {
        switch (Next()) {
        case Event::start:
            ++depth;
            break;
        case Event::end:
            --depth;
            break;
        case Event::none:
            return;
        case Event::text:
            break;
        }
    }
}

} // namespace importing
