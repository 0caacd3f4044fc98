// This file has the errors that occur before anything is sent.
#pragma once

#include <stdexcept>

namespace call
{

// An Error says in what() what is wrong, for people.
class Error : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// A UsageError means that the arguments are wrong. what() names the argument and says what was expected.
class UsageError : public Error
{
    using Error::Error;
};

} // namespace call
