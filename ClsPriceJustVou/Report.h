#pragma once

#include "host/DOMDocument.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kovra {

/// The report of a request: one text to which each refused document appends its message, and which each one's outcome
/// repeats from the beginning. A document that ends in an error adds the whole result document, with all reports so
/// far, so that the report more than doubles with each. It is therefore bounded: from the document on that it cannot
/// take any more, it stays as it is, and each outcome carries its document's own message alone.
class Report {
public:
    /// Bytes that a report may grow to where nothing else is told.
    static constexpr std::size_t defaultBound = 256'000'000;

    explicit Report(std::size_t bound) : bound_(bound) {}

    /// The message of a document that an error ended: the result document, or the error's description where the report
    /// cannot take that any more.
    std::string ErrorMessage(const host::DOMDocument& result, std::string_view description);
    /// Appends the message of a refused document. @return what its outcome says
    std::string_view Refuse(std::string_view message);
    /// Begins anew with the message of a voucher that was not posted. @return what its outcome says
    std::string_view Replace(std::string_view message);
    /// Whether a document could not be taken: messages do not go on from document to document any more.
    bool isFull() const { return full_; }

private:
    bool Fits(std::size_t bytes) const;

    std::size_t bound_;
    std::string text_;
    bool full_ = false;
};

} // namespace kovra
