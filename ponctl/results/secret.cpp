#include "results/secret.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>

#include <termios.h>
#include <unistd.h>

#include "output/exit_code.h"
#include "results/operands.h"

namespace ponctl
{
namespace
{

// While a Silence lives, the terminal does not show what is typed.
class Silence
{
public:
    Silence()
    {
        tcgetattr(STDIN_FILENO, &before);
        termios silent = before;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSADRAIN, &silent);
    }
    ~Silence()
    {
        tcsetattr(STDIN_FILENO, TCSADRAIN, &before);
        std::fputc('\n', stderr);
    }
    Silence(const Silence &) = delete;
    Silence &operator=(const Silence &) = delete;

private:
    termios before{};
};

std::string first_line(std::istream &in, const std::string &name)
{
    std::string line;
    if (!std::getline(in, line)) throw UsageError("--password-file: nothing is in " + name);
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

std::string typed_line()
{
    std::cerr << "Password: " << std::flush;
    const Silence silence;
    return first_line(std::cin, "what was typed");
}

std::string line_of(const std::string &file)
{
    if (file == "-") return isatty(STDIN_FILENO) ? typed_line() : first_line(std::cin, "standard input");
    std::ifstream in(file);
    if (!in) throw UsageError("--password-file: cannot read '" + file + "': " + std::strerror(errno));
    return first_line(in, "'" + file + "'");
}

} // namespace

std::string read_secret(const Secret &secret, size_t longest)
{
    if (!secret.text.empty() && !secret.file.empty())
        throw UsageError("--password: not beside --password-file, which has it already");
    const std::string password = secret.file.empty() ? secret.text : line_of(secret.file);
    check_text(secret.file.empty() ? "--password" : "--password-file", password, longest);
    return password;
}

} // namespace ponctl
