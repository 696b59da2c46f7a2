#include "ClsPriceJustVou/Report.h"

namespace kovra {
namespace {

constexpr std::string_view lineEnd = "\r\n";

} // namespace

std::string Report::ErrorMessage(const host::DOMDocument& result, std::string_view description) {
    // The result document holds the report: where that alone is too much, there is no need to write the document.
    if (!full_ && Fits(text_.size())) {
        if (std::string xml = result.Xml(); Fits(xml.size())) {
            return xml;
        }
    }
    full_ = true;
    return std::string(description);
}

std::string_view Report::Refuse(std::string_view message) {
    if (full_ || !Fits(message.size())) {
        full_ = true;
        return message;
    }
    return text_.append(message).append(lineEnd);
}

std::string_view Report::Replace(std::string_view message) {
    if (full_) {
        return message;
    }
    return text_ = message;
}

bool Report::Fits(std::size_t bytes) const { return text_.size() + bytes + lineEnd.size() <= bound_; }

} // namespace kovra
