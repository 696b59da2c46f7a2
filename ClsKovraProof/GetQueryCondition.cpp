#include "ClsKovraProof/ClsKovraProof.h"
#include "ModPub/Conversions.h"

#include <algorithm>
#include <array>

namespace kovra {
namespace {

/// Columns of these ADO types are compared with text between quotes: dates, text, and the others that the host has
/// always quoted.
constexpr std::array quotedTypes = {7, 8, 130, 133, 134, 135, 200, 201, 202, 205};

bool IsQuoted(const host::Field& field) {
    return std::ranges::find(quotedTypes, static_cast<int>(field.type)) != quotedTypes.end();
}

bool IsTimestamp(const host::Field& field) { return ModPub::UpperCase(field.name) == "QXTS"; }

std::string_view KindFilter(std::string_view kind) {
    if (kind == "出库单") {
        return " where (isnull(bIsSTQc,0)<>1 and isnull(bPuFirst,0)<>1 and isnull(bIAFirst,0)<>1 and brdflag=0)";
    }
    if (kind == "入库单") {
        return " where (isnull(bIsSTQc,0)<>1 and isnull(bPuFirst,0)<>1 and isnull(bIAFirst,0)<>1 and brdflag=1)";
    }
    return {};
}

/// Conditions joined by their connectives; the last one's is not even read.
class Conjunction {
public:
    explicit Conjunction(std::size_t count) : count_(count) {}

    /// @param readLogic gives the connective
    void Append(std::string_view condition, ModPub::FunctionRef<std::string()> readLogic) {
        text_.append(condition);
        if (++appended_ < count_) {
            text_.append(" ").append(readLogic()).append(" ");
        }
    }
    const std::string& text() const { return text_; }

private:
    std::size_t count_;
    std::size_t appended_ = 0;
    std::string text_;
};

/// Values are spliced as they stand, as in every statement.
std::string Condition(const host::Field& field, const std::string& operation, const std::string& value) {
    if (IsTimestamp(field)) {
        return field.name + operation + " convert(Char, convert(Money, " + value + "), 2)";
    }
    const std::string_view quote = IsQuoted(field) ? "'" : "";
    return (field.name + operation).append(quote).append(value).append(quote);
}

} // namespace

/// The WHERE clause of the head query, as far as there is one.
std::string ClsKovraProof::GetQueryCondition(ConditionList eleList, host::Connection& connection,
                                             std::string_view kind) {
    try {
        const std::unique_ptr<host::Recordset> columns = state_.environment.CreateRecordset();
        columns->Open("select * from Rdrecord where 1>1", connection, host::CursorType::forwardOnly,
                      host::LockType::readOnly, host::command_option::unspecified);
        const host::DOMNodeList& elements = eleList();
        host::EaiHelper& eaiHelper = state_.environment.GetEaiHelper();
        const auto fieldOf = [&](const host::DOMNodePtr& element) -> const host::Field& {
            return columns->FieldAt(columns->FieldIndex(eaiHelper.GetAttr(element.get(), "name")));
        };
        const auto timestampCount = static_cast<std::size_t>(
            std::ranges::count_if(elements, [&](const host::DOMNodePtr& each) { return IsTimestamp(fieldOf(each)); }));

        Conjunction ordinary(elements.size() - timestampCount);
        Conjunction timestamps(timestampCount);
        for (const host::DOMNodePtr& element : elements) {
            const host::Field& field = fieldOf(element);
            const std::string operation = eaiHelper.GetAttr(element.get(), "operation");
            const std::string value = eaiHelper.GetAttr(element.get(), "value");
            Conjunction& target = IsTimestamp(field) ? timestamps : ordinary;
            target.Append(Condition(field, operation, value),
                          [&] { return eaiHelper.GetAttr(element.get(), "logic"); });
        }

        std::string clause(KindFilter(kind));
        if (!clause.empty() && !ordinary.text().empty()) {
            clause.append(" and (").append(ordinary.text()).append(")");
        }
        if (!timestamps.text().empty()) {
            clause.append(" and (").append(timestamps.text()).append(")");
        }
        return clause;
    } catch (...) {
        // Callers rely on an unknown column giving every document, the kind's filter dropped as well.
        return {};
    }
}

} // namespace kovra
