#include <clocale>
#include <csignal>

#include "cli/program.h"

int main(int argc, char **argv)
{
    std::setlocale(LC_CTYPE, "");
    std::signal(SIGPIPE, SIG_IGN);
    return ponctl::run_line({argv + 1, argv + argc});
}
