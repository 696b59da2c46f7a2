#include "tests/import/Browser.h"

#include "text/Json.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace test {
namespace {

std::string ReadAll(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

void Run(const std::string& command) {
    if (std::system(command.c_str()) != 0) {
        throw std::runtime_error("failed: " + command);
    }
}

/// A command that runs Chromium with a profile of its own; one that hangs is ended and counts as failed.
std::string Chromium(const TestFolder& folder) {
    return "HOME='" + folder.File("") +
           "' timeout 300 chromium --headless --no-sandbox --disable-gpu "
           "--disable-dev-shm-usage --user-data-dir='" +
           folder.File("profile") + "' ";
}

/// Shows the pages in frames and, once all are loaded, leaves in its own text what they show: for each page a line of
/// its figures, then a line for each id, texts as JSON.
constexpr const char* lookingOn = R"js(
onload = () => {
  const lines = [];
  for (const frame of document.querySelectorAll("iframe")) {
    const page = frame.contentDocument, root = page.documentElement;
    const links = page.querySelectorAll("[src], [href], link, iframe, object, embed").length;
    lines.push(["frame", root.scrollWidth - frame.clientWidth, page.scripts.length, links].join(" "));
    lines.push(JSON.stringify(["", page.body.innerText]));
    for (const element of page.querySelectorAll("[id]"))
      lines.push(JSON.stringify([element.id, element.innerText]));
  }
  document.body.textContent = "";
  const result = document.createElement("pre");
  result.textContent = "\n" + lines.join("\n") + "\n";
  document.body.append(result);
};
for (const [html, width] of pages) {
  const frame = document.createElement("iframe");
  frame.style = `width: ${width}px; height: 2000px; border: 0`;
  frame.srcdoc = html;
  document.body.append(frame);
}
)js";

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// Reads a JSON string at `at`, which is moved behind it.
std::string ReadJsonString(const std::string& text, std::size_t& at) {
    std::string value;
    for (++at; text[at] != '"'; ++at) {
        if (text[at] != '\\') {
            value.push_back(text[at]);
            continue;
        }
        const char escaped = text[++at];
        value.push_back(escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped);
    }
    ++at;
    return value;
}

} // namespace

bool HasBrowser() { return std::system("command -v chromium pdfinfo pdftotext > /dev/null") == 0; }

std::vector<Shown> Show(const std::vector<FramedPage>& pages) {
    const TestFolder folder;
    std::string list;
    for (const FramedPage& page : pages) {
        list.append(list.empty() ? "[" : ",[");
        text::AppendJsonString(list, page.html);
        list.append("," + std::to_string(page.width) + "]");
    }
    std::ofstream(folder.File("frames.html")) << "<!DOCTYPE html><meta charset=utf-8><body><script>const pages = ["
                                              << Replaced(list, "</", "<\\/") << "];" << lookingOn << "</script>";
    Run(Chromium(folder) + "--dump-dom 'file://" + folder.File("frames.html") + "' > '" + folder.File("dom.txt") +
        "' 2> '" + folder.File("log.txt") + "'");
    std::string dom = ReadAll(folder.File("dom.txt"));
    dom = Replaced(Replaced(Replaced(Replaced(dom, "&lt;", "<"), "&gt;", ">"), "&nbsp;", " "), "&amp;", "&");
    std::vector<Shown> all;
    std::istringstream lines(dom.substr(std::min(dom.rfind("<pre>"), dom.size())));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("frame ")) {
            Shown& shown = all.emplace_back();
            std::istringstream(line.substr(6)) >> shown.overflow >> shown.scripts >> shown.links;
        } else if (line.starts_with("[\"") && !all.empty()) {
            std::size_t at = 1;
            const std::string id = ReadJsonString(line, at);
            all.back().texts[id] = ReadJsonString(line, ++at);
        }
    }
    if (all.size() != pages.size()) {
        throw std::runtime_error("Chromium showed nothing: " + ReadAll(folder.File("log.txt")) + dom);
    }
    return all;
}

std::vector<std::string> Print(const std::string& html) {
    const TestFolder folder;
    std::ofstream(folder.File("page.html")) << html;
    Run(Chromium(folder) + "--no-pdf-header-footer --print-to-pdf='" + folder.File("page.pdf") + "' 'file://" +
        folder.File("page.html") + "' > '" + folder.File("log.txt") + "' 2>&1");
    Run("pdfinfo '" + folder.File("page.pdf") + "' | sed -n 's/^Pages: *//p' > '" + folder.File("count.txt") + "'");
    std::vector<std::string> sheets;
    for (int number = 1; number <= std::stoi(ReadAll(folder.File("count.txt"))); ++number) {
        const std::string page = std::to_string(number);
        Run("pdftotext -layout -f " + page + " -l " + page + " '" + folder.File("page.pdf") + "' '" +
            folder.File("text.txt") + "'");
        sheets.push_back(ReadAll(folder.File("text.txt")));
    }
    return sheets;
}

} // namespace test
