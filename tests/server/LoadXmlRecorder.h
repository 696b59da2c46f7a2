#pragma once

#include <string>
#include <vector>

namespace test {

/// Notes, as long as it lives, every text that any MSXML document of this process is asked to load. One at a time.
class LoadXmlRecorder {
public:
    LoadXmlRecorder();
    ~LoadXmlRecorder();
    LoadXmlRecorder(const LoadXmlRecorder&) = delete;
    LoadXmlRecorder& operator=(const LoadXmlRecorder&) = delete;

    /// In the order in which they came.
    const std::vector<std::wstring>& Texts() const;
};

} // namespace test
