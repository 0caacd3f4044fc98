// A function that holds locks, memory and descriptors must not be left in the middle.
#pragma once

#include <pthread.h>

namespace board
{

// While this object lives, the calling thread is not cancelled. A request to cancel it waits.
class NotCancelled
{
public:
    NotCancelled() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before); }
    ~NotCancelled() { pthread_setcancelstate(before, nullptr); }
    NotCancelled(const NotCancelled &) = delete;
    NotCancelled &operator=(const NotCancelled &) = delete;

private:
    int before = PTHREAD_CANCEL_ENABLE;
};

} // namespace board
