#include "cli/password_options.h"

namespace ponctl
{

void add_password(Command &command, Secret &secret, const std::string &what)
{
    command.option("--password", &secret.text,
                   what + "; none when left out. Other users of the machine can see it: --password-file is better",
                   "PASSWORD");
    command.option("--password-file", &secret.file,
                   "file with the password in its first line; - is standard input, where a terminal asks without echo",
                   "FILE");
}

} // namespace ponctl
