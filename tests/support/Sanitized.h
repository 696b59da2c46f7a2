#pragma once

namespace test {

/// Whether the product was built with a sanitizer, which takes memory of its own and a tenth of the speed: tests that
/// repeat themselves then do it less often, and memory is not measured. Told by the build whose product is tested: the
/// tests' own objects serve every build.
extern const bool sanitized;

} // namespace test
