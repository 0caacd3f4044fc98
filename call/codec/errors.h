// What goes wrong before anything is sent.
#pragma once

#include <stdexcept>

namespace call
{

// what() says what is wrong, for people.
class Error : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// Wrong arguments: what() names the argument and says what was expected.
class UsageError : public Error
{
    using Error::Error;
};

} // namespace call
