#include "tests/reliability/TracePipe.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace test {

TracePipe::TracePipe(const std::filesystem::path& path)
    : pipe_(mkfifo(path.c_str(), 0600) == 0 ? open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC) : -1) {
    if (pipe_ == -1 || fcntl(pipe_, F_SETPIPE_SZ, static_cast<int>(ahead / 2)) == -1 ||
        fcntl(pipe_, F_SETFL, O_RDONLY) == -1) {
        throw std::runtime_error("no pipe");
    }
}

TracePipe::~TracePipe() { close(pipe_); }

std::size_t TracePipe::Read(std::size_t bytes) const {
    std::array<char, 4096> block;
    std::size_t done = 0;
    while (done < bytes) {
        // Before the program has opened the pipe there is no end to read yet.
        pollfd ready{pipe_, POLLIN, 0};
        if (poll(&ready, 1, -1) == -1) {
            break;
        }
        const ssize_t count = read(pipe_, block.data(), std::min(block.size(), bytes - done));
        if (count <= 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::size_t TracePipe::ReadAll() const { return Read(std::numeric_limits<std::size_t>::max()); }

} // namespace test
