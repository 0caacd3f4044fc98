#include "access/secrets.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <sodium.h>

#include "text/hex.h"

namespace front
{
namespace
{

constexpr size_t token_size = 32; // bytes

// The library must be made ready once before it is used.
void make_ready()
{
    static const int result = sodium_init();
    if (result < 0) throw std::runtime_error("there is no randomness");
}

} // namespace

std::string hash_of_password(const std::string &password)
{
    make_ready();
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    if (crypto_pwhash_str_alg(hash.data(), password.data(), password.size(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                              crypto_pwhash_MEMLIMIT_INTERACTIVE, crypto_pwhash_ALG_ARGON2ID13) != 0)
        throw std::runtime_error("no memory for the password");
    return hash.data();
}

bool is_password(const std::string &hash, const std::string &password)
{
    make_ready();
    return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

void pretend_to_check(const std::string &password)
{
    static const std::string nobodys = hash_of_password(new_token());
    static_cast<void>(is_password(nobodys, password));
}

std::string new_token()
{
    make_ready();
    std::array<unsigned char, token_size> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    std::array<char, sodium_base64_ENCODED_LEN(token_size, sodium_base64_VARIANT_URLSAFE_NO_PADDING)> text{};
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), sodium_base64_VARIANT_URLSAFE_NO_PADDING);
    return text.data();
}

std::string hash_of_token(const std::string &token)
{
    std::array<unsigned char, token_size> hash{};
    crypto_generichash(hash.data(), hash.size(), reinterpret_cast<const unsigned char *>(token.data()), token.size(),
                       nullptr, 0);
    return text::to_hex(hash);
}

bool is_same_secret(const std::string &one, const std::string &other)
{
    return one.size() == other.size() && sodium_memcmp(one.data(), other.data(), one.size()) == 0;
}

} // namespace front
