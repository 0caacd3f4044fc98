// These tests hold digests against the examples of the standard.
#include "text/sha256.h"

#include <string>

#include <gtest/gtest.h>

#include "text/hex.h"

namespace
{

std::string digest_of(const std::string &bytes)
{
    return text::to_hex(text::sha256(bytes));
}

TEST(Sha256, IsThatOfTheStandard)
{
    EXPECT_EQ(digest_of(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(digest_of("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(digest_of("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(digest_of(std::string(1000000, 'a')), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, DiffersWithTheLengthAroundTheEndOfABlock)
{
    std::string before;
    for (size_t length = 50; length < 130; ++length) {
        const std::string now = digest_of(std::string(length, '\0'));
        EXPECT_NE(now, before);
        before = now;
    }
}

} // namespace
