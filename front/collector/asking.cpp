#include "collector/asking.h"

#include "bsp_pon.h"
#include "generated/service_words.h"

namespace front
{

void check(uint32_t status)
{
    if (status == BSP_OK) return;
    // Some operations return the value of a failed exchange, which is negative.
    if (status == BSP_ERR_IPC || static_cast<int32_t>(status) < 0) throw NoAnswer();
    if (status == PON_ERR_TOO_LARGE) throw TooLarge("the table is too large");
    throw Fault("the OLT answers with status " + std::to_string(status));
}

const view::basic_info &olt_of(const Snapshot &snapshot)
{
    const auto olt = rows_of(snapshot.olt);
    if (olt.empty()) throw Fault("it is not known how many ports the OLT has");
    return olt[0];
}

} // namespace front
