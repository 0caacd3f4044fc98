// Passwords and tokens. Only what they are recognised by is kept.
#pragma once

#include <string>

namespace front
{

inline constexpr size_t shortest_password = 10, longest_password = 1024; // bytes

// Returns the text by which a password is recognised: Argon2id with a salt of its own. It takes a tenth of a second and
// 64 MiB. Throws std::runtime_error when there is no memory.
std::string hash_of_password(const std::string &password);
bool is_password(const std::string &hash, const std::string &password);
// Takes as long as is_password(), for a user that there is not.
void pretend_to_check(const std::string &password);

// Returns 256 random bits, as letters, digits, '-' and '_'.
std::string new_token();
// Returns the text by which a token is recognised. Nobody finds out a token by trying, so this is quick.
std::string hash_of_token(const std::string &token);

// Returns whether the texts are the same, in a time that does not tell where they differ.
bool is_same_secret(const std::string &one, const std::string &other);

} // namespace front
