// This file runs a part of a test in a process of its own, like another front end.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

// Returns what `say` returned in the other process.
template <class Say>
std::string elsewhere(Say say)
{
    int ends[2];
    if (pipe(ends)) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        const std::string said = say();
        const bool written = write(ends[1], said.data(), said.size()) == static_cast<ssize_t>(said.size());
        _exit(written && !testing::Test::HasFailure() ? 0 : 1);
    }
    close(ends[1]);
    std::string heard;
    char buffer[1024];
    for (ssize_t got; (got = read(ends[0], buffer, sizeof buffer)) > 0;)
        heard.append(buffer, static_cast<size_t>(got));
    close(ends[0]);
    int ended = 0;
    waitpid(child, &ended, 0);
    EXPECT_EQ(ended, 0) << "the other process did not end well";
    return heard;
}
