#include "output/mode.h"

namespace ponctl
{

Mode &mode()
{
    static Mode current;
    return current;
}

} // namespace ponctl
