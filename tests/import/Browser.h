#pragma once

#include "tests/import/PackageFile.h"

#include <map>
#include <string>
#include <vector>

namespace test {

/// Whether Chromium and the tools that read its PDF files are installed.
bool HasBrowser();

/// A page as a frame of some width shows it.
struct FramedPage {
    std::string html;
    /// Pixels.
    int width = 0;
};

/// What a frame shows.
struct Shown {
    /// The visible text of each element with an id, by id; of the whole page by "".
    std::map<std::string, std::string> texts;
    /// Pixels that the content takes beyond the frame's width.
    int overflow = 0;
    /// Scripts, and links to anything outside, in the page.
    int scripts = 0;
    int links = 0;
};

/// Shows pages in one run of a headless Chromium. Throws std::runtime_error when it does not run.
std::vector<Shown> Show(const std::vector<FramedPage>& pages);

/// A page printed by a headless Chromium, the text of each sheet. Throws likewise.
std::vector<std::string> Print(const std::string& html);

} // namespace test
