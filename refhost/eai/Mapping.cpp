#include "refhost/eai/Mapping.h"

#include <algorithm>
#include <set>

namespace refhost {
namespace {

/// Reads one mapping file; every failure names it.
class MappingReader {
public:
    explicit MappingReader(std::string_view name) : name_(name) {}

    Mapping Read(const host::DOMNode& root) const {
        if (root.NodeName() != "mapping") {
            Fail("根元素应为mapping，而不是" + root.NodeName());
        }
        RequireOnly(root, {"head", "body"});
        return {std::string(name_), ReadPart(root, "head", false), ReadPart(root, "body", true)};
    }

private:
    [[noreturn]] void Fail(std::string_view reason) const { throw MappingError(name_, reason); }

    void RequireOnly(const host::DOMNode& parent, std::initializer_list<std::string_view> known) const {
        for (const host::DOMNodePtr& child : parent.ChildNodes()) {
            if (child->IsElement() && std::ranges::find(known, child->NodeName()) == known.end()) {
                Fail(parent.NodeName() + "中有未知元素" + child->NodeName());
            }
        }
    }

    std::string Attribute(const host::DOMNode& element, std::string_view attribute) const {
        std::string value = element.GetAttribute(attribute).value_or("");
        if (value.empty()) {
            Fail(element.NodeName() + "缺少属性" + std::string(attribute));
        }
        return value;
    }

    MappedPart ReadPart(const host::DOMNode& root, std::string_view name, bool hasRows) const {
        const host::DOMNodeList found = root.SelectNodes(name);
        if (found.size() != 1) {
            Fail("应有且只有一个元素" + std::string(name));
        }
        const host::DOMNode& element = *found.front();
        RequireOnly(element, {"field"});
        MappedPart part{Attribute(element, "element"), hasRows ? Attribute(element, "row") : std::string(), {}};
        std::set<std::string> elements;
        for (const host::DOMNodePtr& field : element.SelectNodes("field")) {
            MappedField mapped{Attribute(*field, "element"), {}};
            mapped.column = field->GetAttribute("column").value_or(mapped.element);
            if (mapped.column.empty()) {
                Fail("元素" + mapped.element + "的column为空");
            }
            if (!elements.insert(mapped.element).second) {
                Fail(std::string(name) + "中元素" + mapped.element + "重复");
            }
            part.fields.push_back(std::move(mapped));
        }
        return part;
    }

    std::string_view name_;
};

} // namespace

Mapping Mapping::Parse(std::string_view name, std::string_view text, host::Environment& environment) {
    const std::unique_ptr<host::DOMDocument> document = environment.CreateDOMDocument();
    if (!document->LoadXML(text)) {
        throw MappingError(name, "不是格式正确的XML");
    }
    return MappingReader(name).Read(*document->DocumentElement());
}

host::Error MappingError(std::string_view name, std::string_view reason) {
    return {host::error_number::unspecified,
            std::string("映射文件").append(name).append("无效：").append(reason).append("。")};
}

} // namespace refhost
