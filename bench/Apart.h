#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

using Texts = std::vector<std::string>;

/// What `work` returns, which it does in a process of its own: what it leaves behind in memory changes nothing of what
/// is measured next, here or apart. Throws std::runtime_error when it fails.
Texts Apart(const std::function<Texts()>& work);

/// Seconds of the processor that `work` tells of a run, likewise.
double SecondsApart(const std::function<double()>& work);

} // namespace bench
