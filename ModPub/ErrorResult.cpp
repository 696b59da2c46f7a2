#include "ModPub/ErrorResult.h"

#include "ModPub/Trap.h"
#include "ModPub/XmlText.h"

namespace ModPub {
namespace {

std::string WrittenHere(const host::Error& error) {
    std::string xml = "<error";
    AppendXmlAttribute(xml, "code", std::to_string(error.number()));
    AppendXmlAttribute(xml, "dsc", error.description());
    return xml.append("/>");
}

} // namespace

std::string ErrorResult(host::Environment& environment, ImportObserver* observer) noexcept {
    try {
        const host::Error error = PendingError();
        if (observer != nullptr) {
            observer->RequestRefused(std::to_string(error.number()), error.description());
        }
        try {
            return environment.GetEaiHelper().MakeErrorResult(std::to_string(error.number()), error.description(), {});
        } catch (...) {
            return WrittenHere(error);
        }
    } catch (...) {
        return {};
    }
}

} // namespace ModPub
