#include "refhost/sql/engine/PlanCache.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace refhost::sql {

const std::string& PlanCache::PinnedKey(const Shape& shape, const std::vector<Literal>& literals) {
    key_.clear();
    for (const std::size_t index : shape.pinned) {
        const std::string_view body = literals[index].body;
        // The length in front keeps the values apart.
        key_ += std::to_string(body.size());
        key_ += ':';
        key_ += body;
    }
    return key_;
}

Plan* PlanCache::Find(const std::string& shape, const std::vector<Literal>& literals) {
    const auto found = shapes_.find(shape);
    if (found == shapes_.end()) {
        return nullptr;
    }
    const Shape& known = found->second;
    if (known.pinned.empty()) {
        return known.only.get();
    }
    const auto variant = known.variants.find(PinnedKey(known, literals));
    return variant == known.variants.end() ? nullptr : variant->second.get();
}

Plan* PlanCache::Add(const std::string& shape, const std::vector<Literal>& literals, Plan plan) {
    if (size_ >= mostPlans) {
        Clear();
    }
    Shape& known = shapes_[shape];
    std::vector<std::size_t> pinned;
    std::set_union(known.pinned.begin(), known.pinned.end(), plan.pinned.begin(), plan.pinned.end(),
                   std::back_inserter(pinned));
    if (pinned != known.pinned) {
        size_ -= known.variants.size() + (known.only ? 1 : 0);
        known = Shape();
        known.pinned = std::move(pinned);
    }
    auto kept = std::make_unique<Plan>(std::move(plan));
    Plan* const result = kept.get();
    ++size_;
    if (known.pinned.empty()) {
        known.only = std::move(kept);
    } else {
        known.variants[PinnedKey(known, literals)] = std::move(kept);
    }
    return result;
}

void PlanCache::Forget(const std::vector<std::string>& keys) {
    const auto depends = [&](const Plan& plan) {
        const bool isNamed = std::ranges::find_first_of(plan.named.keys, keys) != plan.named.keys.end();
        return isNamed || !plan.named.areTables || plan.rows;
    };
    const auto forget = [&](const std::unique_ptr<Plan>& plan) {
        if (depends(*plan)) {
            --size_;
            return true;
        }
        plan->statement.reset();
        return false;
    };
    for (auto& [text, shape] : shapes_) {
        if (shape.only && forget(shape.only)) {
            shape.only.reset();
        }
        std::erase_if(shape.variants, [&](const auto& variant) { return forget(variant.second); });
    }
}

void PlanCache::Clear() {
    shapes_.clear();
    size_ = 0;
}

} // namespace refhost::sql
