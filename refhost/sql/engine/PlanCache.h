#pragma once

#include "refhost/sql/store/Plan.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace refhost::sql {

/// Plans by the shape of their statements, and among those of one shape by the values of the pinned literals.
class PlanCache {
public:
    /// The plan for a statement, nullptr when there is none yet.
    Plan* Find(const std::string& shape, const std::vector<Literal>& literals);
    /// Keeps a plan. Literals that a plan of the shape pinned are pinned for all of them.
    Plan* Add(const std::string& shape, const std::vector<Literal>& literals, Plan plan);
    void Clear();
    /// Forgets the plans that depend on one of these tables. Of all others it lets the statements go, which SQLite
    /// would refuse to run.
    /// @param keys see `Catalog::KeyOf`
    void Forget(const std::vector<std::string>& keys);
    std::size_t Size() const { return size_; }

private:
    struct Shape {
        std::vector<std::size_t> pinned;
        /// The plan of a shape that pins nothing.
        std::unique_ptr<Plan> only;
        std::unordered_map<std::string, std::unique_ptr<Plan>> variants;
    };

    const std::string& PinnedKey(const Shape& shape, const std::vector<Literal>& literals);

    /// Beyond so many plans the cache starts anew, which bounds its memory.
    static constexpr std::size_t mostPlans = 1024;

    std::unordered_map<std::string, Shape> shapes_;
    std::size_t size_ = 0;
    std::string key_;
};

} // namespace refhost::sql
