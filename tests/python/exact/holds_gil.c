/* This function tells from within an exchange whether the calling thread holds up all other Python threads. */
#include "bsp_testing/board.h"

int PyGILState_Check(void);

void note_whether_gil_is_held(const rb_exchange *exchange, void *context)
{
    (void)exchange;
    *(int *)context = PyGILState_Check();
}
