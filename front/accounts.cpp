#include "accounts.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <stdexcept>

#include <termios.h>
#include <unistd.h>

#include "access/secrets.h"
#include "access/users.h"

namespace front
{
namespace
{

// Keeps a terminal from showing what is typed while it lives.
class Quiet
{
public:
    Quiet()
    {
        if (tcgetattr(STDIN_FILENO, &before) != 0) return;
        termios quiet = before;
        quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        is_set = tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet) == 0;
    }
    ~Quiet()
    {
        if (is_set) tcsetattr(STDIN_FILENO, TCSAFLUSH, &before);
    }
    Quiet(const Quiet &) = delete;
    Quiet &operator=(const Quiet &) = delete;

private:
    termios before{};
    bool is_set = false;
};

std::string typed(const char *question)
{
    const bool asks = isatty(STDIN_FILENO) != 0;
    if (asks) std::cerr << question << std::flush;
    const Quiet quiet;
    std::string line;
    if (!std::getline(std::cin, line)) throw std::runtime_error("no password was given");
    if (asks) std::cerr << '\n';
    return line;
}

std::string new_password()
{
    const std::string password = typed("Password: ");
    if (password.size() < shortest_password || password.size() > longest_password)
        throw std::runtime_error("a password has from " + std::to_string(shortest_password) + " to " +
                                 std::to_string(longest_password) + " bytes");
    if (isatty(STDIN_FILENO) && typed("Again: ") != password)
        throw std::runtime_error("the passwords are not the same");
    return hash_of_password(password);
}

Role expected_role(const std::string &word)
{
    if (const std::optional<Role> role = role_of(word)) return *role;
    throw std::runtime_error("'" + word + "' is no role; expected read, write or service-affecting");
}

// The first user begins the file.
std::vector<User> users_of(const std::string &file, bool may_begin)
{
    if (may_begin && access(file.c_str(), F_OK) != 0) return {};
    return read_users(file);
}

// Changes one user of a file.
template <class Change>
void change_user(const std::string &file, const std::string &name, Change change)
{
    std::vector<User> users = users_of(file, false);
    const auto user = std::ranges::find(users, name, &User::name);
    if (user == users.end()) throw std::runtime_error(file + ": has no user '" + name + "'");
    change(users, user);
    write_users(file, users);
}

} // namespace

void add_user(const std::string &file, const std::string &name, const std::string &role)
{
    const Role known = expected_role(role);
    if (!is_user_name(name))
        throw std::runtime_error("'" + name + "': expected up to 32 letters, digits, '-', '_' and '.'");
    std::vector<User> users = users_of(file, true);
    if (std::ranges::find(users, name, &User::name) != users.end())
        throw std::runtime_error(file + ": has a user '" + name + "' already");
    users.push_back({.name = name, .role = known, .password = new_password()});
    write_users(file, users);
}

void change_password(const std::string &file, const std::string &name)
{
    change_user(file, name, [](auto &, auto user) { user->password = new_password(); });
}

void change_role(const std::string &file, const std::string &name, const std::string &role)
{
    const Role known = expected_role(role);
    change_user(file, name, [known](auto &, auto user) { user->role = known; });
}

void remove_user(const std::string &file, const std::string &name)
{
    change_user(file, name, [](auto &users, auto user) { users.erase(user); });
}

void change_token(const std::string &file, const std::string &name, bool none)
{
    const std::string token = none ? "" : new_token();
    change_user(file, name, [&token](auto &, auto user) { user->token = token.empty() ? "" : hash_of_token(token); });
    if (!none) std::printf("%s\n", token.c_str());
}

void list_users(const std::string &file)
{
    for (const User &user : users_of(file, false))
        std::printf("%-32s %-18s %s\n", user.name.c_str(), std::string(catalogue::to_text(user.role)).c_str(),
                    user.token.empty() ? "" : "has a token");
}

} // namespace front
