// These tests check what operations do with the service's status word.
#include "selection.h"

namespace contract
{

using ServiceStatus = OfOperation;

TEST_P(ServiceStatus, IsPassedOnUnchanged)
{
    for (const uint32_t status : {1u, 1001u, 1002u, 3003u, 4001u, 0x80000000u, 0xFFFFFFFFu}) {
        Subject answered(operation);
        script_exchange(IPC_OK, status, {});
        EXPECT_EQ(answered.call(), status);
    }
}

TEST_P(ServiceStatus, IsZeroWhenTheServiceWroteNone)
{
    rb_answer answer = {};
    answer.status_not_written = 1;
    rb_script_answer(&answer);
    EXPECT_EQ(subject.call(), 0u);
}

TEST_P(ServiceStatus, IsNotLogged)
{
    script_exchange(IPC_OK, 4001, {});
    subject.call();
    EXPECT_EQ(rb_logs(), lines_logged(operation));
}

ON_OPERATIONS(ServiceStatus, operations_where([](const Operation &each) {
                  return !catalogue::find_oddity(each, catalogue::Facet::status);
              }));

} // namespace contract
