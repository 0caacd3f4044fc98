// What the commands "ponfront user ..." do: they add, change and list the users of a file.
#pragma once

#include <string>

namespace front
{

// Each function throws std::runtime_error when the file cannot be used or what is given is wrong. A
// password is asked for at the terminal, or read as the first line of standard input.

void add_user(const std::string &file, const std::string &name, const std::string &role);
void change_password(const std::string &file, const std::string &name);
void change_role(const std::string &file, const std::string &name, const std::string &role);
void remove_user(const std::string &file, const std::string &name);
// Prints a new token in place of the one that the user had; `none` only takes that away.
void change_token(const std::string &file, const std::string &name, bool none);
void list_users(const std::string &file);

} // namespace front
