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
    void start(const std::vector<std::string> &words);
    // Returns the next line, or nothing when none comes until then.
    std::optional<std::string> read_line(uint64_t until);
    void take_errors();
    void lose(const std::string &why);

    std::string program;
    pid_t child = -1;
    int input = -1, output = -1, errors = -1; // of the child
    Hello said;
    std::string received;   // of the line that comes
    std::string complained; // the end of what the child wrote on standard error
    uint64_t number = 0;    // of the last request
    std::string reason;
};

// Returns the words that run the program on this host: ssh, without questions at the terminal.
std::vector<std::string> ssh_words(const std::string &host);

} // namespace fleet
