#include "refhost/sql/store/IdentityLine.h"

#include <limits>

#include <fmt/format.h>

namespace refhost::sql {

std::string EndlessIdentityLine(const Column& column) {
    return Quoted(column.name) + " INTEGER PRIMARY KEY AUTOINCREMENT";
}

std::string IdentityLine(const Column& column) {
    const std::int64_t last = column.type.base == Base::tinyint    ? std::numeric_limits<std::uint8_t>::max()
                              : column.type.base == Base::smallint ? std::numeric_limits<std::int16_t>::max()
                              : column.type.base == Base::bigint   ? std::numeric_limits<std::int64_t>::max()
                                                                   : std::numeric_limits<std::int32_t>::max();
    if (column.type.base == Base::bigint && column.step == 1) {
        return EndlessIdentityLine(column);
    }
    const std::string quoted = Quoted(column.name);
    // SQLite itself counts by 1 alone.
    const std::string line = column.step == 1 ? EndlessIdentityLine(column) : quoted + " INTEGER PRIMARY KEY";
    const std::string first =
        column.step > 0 ? std::string()
                        : fmt::format(" AND {} >= {}", quoted, column.type.base == Base::tinyint ? 0 : -last - 1);
    return fmt::format("{} CONSTRAINT {} CHECK ({} <= {}{})", line,
                       Quoted(std::string(identityEnd) + std::string(NameOf(column.type.base))), quoted, last, first);
}

} // namespace refhost::sql
