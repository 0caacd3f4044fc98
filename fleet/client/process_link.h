// A ProcessLink reaches one OLT by a program that speaks the lines of frame.h over its standard input and output, as
// `ssh HOST ponctl serve --stdio`.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

#include "fleet/client/client.h"
#include "fleet/protocol/frame.h"
#include "fleet/protocol/link.h"

namespace fleet
{

class ProcessLink : public Link
{
public:
    // Runs the program, whose name is the first word, and waits for its first line. Throws Unreachable, with what the
    // program wrote on standard error.
    ProcessLink(const std::vector<std::string> &words, uint32_t milliseconds);
    // Ends the program.
    ~ProcessLink() override;
    ProcessLink(const ProcessLink &) = delete;
    ProcessLink &operator=(const ProcessLink &) = delete;

    const Hello &hello() const { return said; }

    // Throws Unreachable when the program ended before the request was sent. When it ends behind that, there is no
    // answer; lost() says why.
    std::optional<std::string> exchange(const std::string &request, catalogue::Class impact,
                                        uint32_t milliseconds) override;
    // Returns why nothing more can be said to the program. The text is empty while it is there.
    const std::string &lost() const { return reason; }

private:
    // Waits until the program can be written to, or has written. Returns false when it is too late.
    bool wait(bool to_write, uint64_t until);
    // Writes what can be written at once, and takes it from the text.
    void write(std::string &text);
    void read_output();
    void read_errors();
    std::optional<std::string> take_line();
    // Notes that nothing more can be said to the program, and adds what it complained of.
    void lose(const std::string &why);
    void end();

    std::string program;
    pid_t child = -1;
    int channel = -1; // both its standard input and its standard output
    int errors = -1;  // its standard error
    Hello said;
    std::string received;   // behind the last whole line
    size_t searched = 0;    // so much of it has no newline
    std::string complained; // the end of what it wrote on standard error
    uint64_t number = 0;    // of the last request
    std::string reason;
};

// Returns the words that run the program on this host: ssh, without questions at the terminal. Throws a
// call::UsageError when no host has this name.
std::vector<std::string> ssh_words(const std::string &host);

} // namespace fleet
