#include "process.h"

#include <cstdio>
#include <memory>
#include <stdexcept>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

struct Close {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

std::string contents(std::FILE *file)
{
    std::string text;
    char chunk[4096];
    std::rewind(file);
    while (const size_t count = std::fread(chunk, 1, sizeof chunk, file))
        text.append(chunk, count);
    return text;
}

} // namespace

Finished ponctl(const std::vector<std::string> &arguments, int output)
{
    const File out(std::tmpfile()), err(std::tmpfile());
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", 0, 0);
    posix_spawn_file_actions_adddup2(&actions, output < 0 ? fileno(out.get()) : output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(err.get()), STDERR_FILENO);

    std::string program = PONCTL;
    std::vector<std::string> words = arguments;
    std::vector<char *> argv{program.data()};
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int error = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error) throw std::runtime_error("cannot run " + program);

    int status = 0;
    waitpid(pid, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(out.get()), contents(err.get())};
}
