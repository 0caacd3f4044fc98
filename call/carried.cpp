// After a carried exchange, the library finds the result database and the file that came with it. So the program
// defines these functions of the board's libraries itself. When nothing was carried, each passes the call on.
#include <cstring>

#include <dlfcn.h>

#include "board/datastore.h"
#include "board/util.h"
#include "call/record_call.h"

namespace call
{
namespace
{

thread_local Carrier *carrier = nullptr;
thread_local RecordOutcome carried;

} // namespace

Carriage::Carriage(Carrier &used) : before(carrier)
{
    carrier = &used;
}

Carriage::~Carriage()
{
    carrier = before;
    forget_carried();
}

Carrier *carrier_of_thread()
{
    return carrier;
}

void keep_carried(RecordOutcome outcome)
{
    carried = std::move(outcome);
}

void forget_carried()
{
    carried = {};
}

namespace
{

// Returns the function of the board's library that has this name.
template <class Function>
Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

bool is_carried(const char *file)
{
    return carrier && file && !carried.file.name.empty() && carried.file.name == file;
}

} // namespace
} // namespace call

extern "C" {

db_handle *db_from_shmem(uint32_t key, uint32_t bound)
{
    if (!call::carrier) return call::next<decltype(db_from_shmem)>("db_from_shmem")(key, bound);
    const std::string &result = call::carried.result;
    if (result.empty() || key != call::carried.result_key || result.size() > bound) return nullptr;
    return db_from_string(result.c_str());
}

db_handle *db_create_fromfile(const char *file)
{
    if (!call::is_carried(file)) return call::next<decltype(db_create_fromfile)>("db_create_fromfile")(file);
    const std::string text(call::carried.file.content.begin(), call::carried.file.content.end());
    return db_from_string(text.c_str());
}

int get_from_file(const char *file, uint32_t count, void *destination)
{
    if (!call::is_carried(file)) return call::next<decltype(get_from_file)>("get_from_file")(file, count, destination);
    const call::Bytes &content = call::carried.file.content;
    if (content.size() < count) return -1;
    std::memcpy(destination, content.data(), count);
    return 0;
}

int delete_file(const char *file)
{
    if (!call::is_carried(file)) return call::next<decltype(delete_file)>("delete_file")(file);
    call::carried.file = {};
    return 0;
}
}
