#include "output/mode.h"

namespace ponctl
{

Mode &mode()
{
    static Mode current;
    return current;
}

std::string shown_secret(const std::string &secret)
{
    return secret.empty() || mode().secrets ? secret : "***";
}

} // namespace ponctl
