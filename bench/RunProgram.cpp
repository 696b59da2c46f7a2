#include "bench/RunProgram.h"

#include "bench/Apart.h"
#include "bench/imports/FileAccount.h"
#include "bench/imports/RunImport.h"

#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

double SecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

} // namespace

ProgramRun RunProgram(std::vector<std::string> words, const std::string& output) {
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    int status = 0;
    rusage usage{};
    ProgramRun run;
    run.time = Measure([&] {
        pid_t child = 0;
        if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0 ||
            wait4(child, &status, 0, &usage) < 0) {
            status = 1;
        }
    });
    posix_spawn_file_actions_destroy(&actions);
    if (status != 0) {
        throw std::runtime_error(words[0] + " failed");
    }
    run.time.processor = SecondsOf(usage.ru_utime) + SecondsOf(usage.ru_stime);
    run.peak = static_cast<double>(usage.ru_maxrss) * 1024;
    return run;
}

std::vector<std::string> PrepareImport(const Import& import, std::size_t rows, const std::string& folder,
                                       const std::string& program) {
    // The memory of a program that is run counts that of the process that runs it, which shall stay small.
    Apart([&] {
        const FileAccount account(folder);
        account.Fill(import.account(rows));
        std::ofstream(folder + "/login.xml") << LoginXml(account.connectionString());
        std::ofstream(folder + "/request.xml") << import.request(rows);
        return Texts();
    });
    return {
        program, "transact", "--class", import.className, "--login", folder + "/login.xml", folder + "/request.xml"};
}

} // namespace bench
