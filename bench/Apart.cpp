#include "bench/Apart.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Each text behind its size; a last size of its own kind says that all are there.
void Write(const Texts& texts, int pipe) {
    const File file(fdopen(pipe, "w"));
    const auto writeSize = [&](std::size_t size) { std::fwrite(&size, sizeof(size), 1, file.get()); };
    for (const std::string& text : texts) {
        writeSize(text.size());
        std::fwrite(text.data(), 1, text.size(), file.get());
    }
    writeSize(std::string::npos);
}

/// False when the writer did not come to its end.
bool Read(Texts& texts, int pipe) {
    const File file(fdopen(pipe, "r"));
    std::size_t size = 0;
    while (std::fread(&size, sizeof(size), 1, file.get()) == 1) {
        if (size == std::string::npos) {
            return true;
        }
        std::string& text = texts.emplace_back(size, '\0');
        if (std::fread(text.data(), 1, size, file.get()) != size) {
            return false;
        }
    }
    return false;
}

} // namespace

Texts Apart(const std::function<Texts()>& work) {
    int ends[2] = {};
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe to a part that runs apart");
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        try {
            Write(work(), ends[1]);
            _exit(0);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "kovra-bench: %s\n", error.what());
            _exit(1);
        }
    }
    close(ends[1]);
    Texts texts;
    const bool read = Read(texts, ends[0]);
    if (child < 0 || waitpid(child, nullptr, 0) < 0 || !read) {
        throw std::runtime_error("a part that runs apart failed");
    }
    return texts;
}

double SecondsApart(const std::function<double()>& work) {
    return std::stod(Apart([&] { return Texts{std::to_string(work())}; }).at(0));
}

} // namespace bench
