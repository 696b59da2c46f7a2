#include "bench/Measure.h"
#include "bench/Tables.h"
#include "bench/imports/FileAccount.h"
#include "bench/imports/RunImport.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

namespace bench {
namespace {

constexpr double megabyte = 1e6;

/// Runs a program and returns its peak of memory in bytes. Throws std::runtime_error when it fails.
double PeakOf(std::vector<std::string> words, const std::string& output) {
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (error != 0 || wait4(child, &status, 0, &usage) < 0 || status != 0) {
        throw std::runtime_error(words[0] + " failed");
    }
    return static_cast<double>(usage.ru_maxrss) * 1024;
}

} // namespace

void PrintPeakTable(std::size_t rows, const std::string& folder, const std::string& program) {
    fmt::print("| import | rows | request MB | peak MB | bound MB |\n|---|---|---|---|---|\n");
    for (const Import& import : Imports()) {
        // The search for repetitions among a voucher's entries grows with their square.
        const std::size_t count = import.className == PriceVouchers().className ? rows / 10 : rows;
        const FileAccount account(folder);
        account.Fill(import.account(count));
        const std::string login = folder + "/login.xml";
        const std::string request = folder + "/request.xml";
        const std::string text = import.request(count);
        std::ofstream(login) << LoginXml(account.connectionString());
        std::ofstream(request) << text;
        const double peak = PeakOf({program, "transact", "--class", import.className, "--login", login, request},
                                   folder + "/result.xml");
        const double size = static_cast<double>(text.size());
        fmt::print("| {} | {} | {:.1f} | {:.0f} | {:.0f} |\n", import.name, count, size / megabyte, peak / megabyte,
                   (size * 6 + 20 * megabyte) / megabyte);
        std::fflush(stdout);
    }
}

} // namespace bench
