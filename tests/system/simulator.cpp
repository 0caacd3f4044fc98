#include "simulator.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace
{

// A Folder is removed when the process ends.
struct Folder {
    std::string path = (std::filesystem::temp_directory_path() / "ponsim-test.XXXXXX").string();

    Folder()
    {
        if (!mkdtemp(path.data())) throw std::runtime_error("mkdtemp");
        setenv("BOARD_IPC_DIR", (path + "/ipc").c_str(), 1);
    }
    ~Folder() { std::filesystem::remove_all(path); }
};

// All simulators have the same folder, because the board's libraries look only once where the service is.
const std::string &folder_of_process()
{
    static const Folder folder;
    return folder.path;
}

} // namespace

Simulator::Simulator(std::vector<std::string> arguments)
    : options(std::move(arguments)), state(folder_of_process() + "/olt.db")
{
    options.insert(options.begin(), {PONSIM, "--state", state});
    start();
}

Simulator::~Simulator()
{
    if (pid) kill();
    for (const char *suffix : {"", "-wal", "-shm"})
        std::filesystem::remove_all(state + suffix);
}

const std::string &Simulator::folder()
{
    return folder_of_process();
}

void Simulator::start()
{
    int output[2];
    if (pipe(output)) throw std::runtime_error("pipe");
    pid = fork();
    if (pid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(output[1], STDOUT_FILENO);
        close(output[0]);
        close(output[1]);
        std::vector<char *> words;
        for (std::string &option : options)
            words.push_back(option.data());
        words.push_back(nullptr);
        execv(PONSIM, words.data());
        std::perror(PONSIM);
        _exit(127);
    }
    close(output[1]);
    // The first line of its output says that it serves. No line at all means that it ended.
    std::string line;
    for (char byte; read(output[0], &byte, 1) == 1 && byte != '\n';)
        line += byte;
    close(output[0]);
    if (line.find("serving") == std::string::npos) throw std::runtime_error("ponsim did not start: " + line);
}

void Simulator::kill()
{
    ::kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    pid = 0;
}
