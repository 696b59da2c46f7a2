// Runs a fuzz target without a fuzzer: every file of its corpus, then a number of seeded mutations of them, the same on
// every machine.  fuzz-TARGET CORPUS MUTATIONS
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::string> ReadCorpus(const char* folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        files.push_back(file.path());
    }
    std::ranges::sort(files);
    std::vector<std::string> texts;
    for (const std::filesystem::path& path : files) {
        std::ifstream file(path, std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return texts;
}

class Mutator {
public:
    explicit Mutator(const std::vector<std::string>& corpus) : corpus_(corpus) {}

    std::string Next() {
        std::string text = Any();
        for (std::size_t changes = 1 + Below(4); changes > 0; --changes) {
            Change(text);
        }
        return text;
    }

private:
    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }
    const std::string& Any() { return corpus_[Below(corpus_.size())]; }

    void Change(std::string& text) {
        const std::size_t at = Below(text.size() + 1);
        const std::size_t length = 1 + Below(std::min<std::size_t>(text.size() - at + 1, 16));
        switch (Below(5)) {
        case 0:
            text.erase(at, length);
            break;
        case 1:
            text.insert(at, 1, static_cast<char>(Below(256)));
            break;
        case 2:
            if (at < text.size()) {
                text[at] = static_cast<char>(Below(256));
            }
            break;
        case 3:
            text.insert(at, text.substr(Below(text.size()), length));
            break;
        default: {
            const std::string& other = Any();
            const std::size_t from = Below(other.size());
            text.replace(at, length, other, from, 1 + Below(64));
        }
        }
    }

    const std::vector<std::string>& corpus_;
    std::mt19937 random_{1};
};

void Run(const std::string& text) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "%s CORPUS MUTATIONS\n", arguments[0]);
        return 2;
    }
    const std::vector<std::string> corpus = ReadCorpus(arguments[1]);
    if (corpus.empty()) {
        std::fprintf(stderr, "%s holds no files\n", arguments[1]);
        return 2;
    }
    const long mutations = std::strtol(arguments[2], nullptr, 10);
    std::for_each(corpus.begin(), corpus.end(), Run);
    Mutator mutator(corpus);
    for (long i = 0; i < mutations; ++i) {
        Run(mutator.Next());
    }
    std::printf("%zu files and %ld mutations of them\n", corpus.size(), mutations);
    return 0;
}
