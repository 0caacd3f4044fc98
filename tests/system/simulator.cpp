#include "simulator.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

Simulator::Simulator(std::vector<std::string> arguments) : options(std::move(arguments))
{
    directory = (std::filesystem::temp_directory_path() / "ponsim-test.XXXXXX").string();
    if (!mkdtemp(directory.data())) throw std::runtime_error("mkdtemp");
    setenv("BOARD_IPC_DIR", (directory + "/ipc").c_str(), 1);
    options.insert(options.begin(), {PONSIM, "--state", directory + "/olt.db"});
    start();
}

Simulator::~Simulator()
{
    if (pid) kill();
    std::filesystem::remove_all(directory);
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
    // Its first line says that it serves; no line at all says that it ended.
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
