// These operations carry profiles and the service's configuration, which the library passes on unread. A failed
// exchange on the profile channel is not logged, and a request is as long as its payload makes it.
#include "board/util.h"
#include "frame/exchange.h"
#include "frame/request.h"

namespace
{

// A request is longer than its payload by this many bytes. The payload starts 4 bytes before their end, so that 4 zeros
// follow the payload.
constexpr uint32_t header_length = 28;
constexpr uint32_t longest_payload = sizeof(bsp_profile_msg) - header_length;

// These are the values that the response length word offers: nothing, or the length of a file's name. The buffer is a
// whole record in both cases.
constexpr uint32_t no_length = 0;
constexpr uint32_t file_name_length = 61;

// Writes a request and returns its length.
FRAME_SHARED uint32_t put_request(bsp_profile_msg &request, uint32_t action, uint32_t is_get, const void *payload,
                                  uint32_t length)
{
    frame::clear(&request, sizeof request);
    request.action = action;
    request.is_get = is_get;
    if (payload && length) __builtin_memcpy(request.data, payload, length);
    return length + header_length;
}

// Returns true when the service answered: then `result` is its status word, and `response` its answer. Returns false
// when nothing was sent or the exchange failed: then `result` is that of the operation.
FRAME_SHARED bool ask(bsp_profile_msg &response, uint32_t action, const void *payload, uint32_t length,
                      uint32_t answer_length, uint32_t &result)
{
    result = BSP_ERR_PARAM;
    if (length > longest_payload) return false;
    bsp_profile_msg request;
    const uint32_t request_length = put_request(request, action, 1, payload, length);
    frame::clear(&response, sizeof response);
    uint32_t status = BSP_OK;
    const int32_t ipc_result = ipc_dgram_get_exec(BSP_IPC_MODULE, BSP_MSG_PROFILE, &request, request_length, &response,
                                                  &answer_length, &status);
    result = ipc_result ? static_cast<uint32_t>(ipc_result) : status;
    return ipc_result == 0;
}

// Returns the file's name in an answer.
const char *file_name(bsp_profile_msg &response)
{
    char *name = reinterpret_cast<char *>(&response) + offsetof(bsp_profile_msg, data);
    name[sizeof response.data - 1] = '\0';
    return name;
}

} // namespace

uint32_t bsp_pon_get_config_write(char *text_out, uint32_t *word_out, uint32_t port, uint32_t arg)
{
    frame::Request<bsp_plat_msg> request{BSP_CMD_CONFIG_WRITE, port, arg};
    frame::Response response;
    uint32_t result;
    if (response.receive(&*request, sizeof *request, frame::whole<bsp_plat_msg>, result, frame::on(BSP_MSG_CFGWR)) &&
        text_out) {
        __builtin_strcpy(text_out, response.text(sizeof *request, offsetof(bsp_plat_msg, plat_data)));
        if (word_out) *word_out = response.word(offsetof(bsp_plat_msg, plat_arg120));
    }
    return result;
}

uint32_t bsp_profile_exec_get(uint32_t action, void *buf, uint32_t len)
{
    bsp_profile_msg response;
    uint32_t result;
    if (ask(response, action, buf, len, no_length, result) && buf) __builtin_memcpy(buf, response.data, len);
    return result;
}

uint32_t bsp_profile_exec_get_(uint32_t action, void *buf, uint32_t len, void *out, uint32_t out_len)
{
    bsp_profile_msg response;
    uint32_t result;
    if (!ask(response, action, buf, len, no_length, result) || result != BSP_OK) return result;
    if (out) {
        frame::deliver(response.data, sizeof response.data, out, out_len);
    } else if (buf) {
        __builtin_memcpy(buf, response.data, len);
    }
    return result;
}

uint32_t bsp_profile_exec_get_json(uint32_t action, db_handle **db_out)
{
    bsp_profile_msg response;
    uint32_t result;
    if (!ask(response, action, nullptr, 0, file_name_length, result)) return result;
    const char *name = file_name(response);
    *db_out = db_create_fromfile(name);
    userlog_debug(__func__, __LINE__, "content filename:%s", name);
    delete_file(name);
    return result;
}

uint32_t bsp_profile_exec_set(uint32_t action, const void *buf, uint32_t len)
{
    if (len > longest_payload) return BSP_ERR_PARAM;
    bsp_profile_msg request;
    const uint32_t request_length = put_request(request, action, 0, buf, len);
    uint32_t status = BSP_OK;
    const int32_t ipc_result = ipc_dgram_set_exec(BSP_IPC_MODULE, BSP_MSG_PROFILE, &request, request_length, &status);
    return ipc_result ? static_cast<uint32_t>(ipc_result) : status;
}

uint32_t bsp_profile_exec_get_cfgwr(uint32_t action, void **data_out, uint32_t *len_out)
{
    bsp_profile_msg response;
    uint32_t result;
    if (!ask(response, action, nullptr, 0, no_length, result) || result != BSP_OK || response.count == 0) return result;
    void *block = pmalloc(response.count);
    if (!block) {
        userlog_err(__func__, __LINE__, "pmalloc failed. action:%d", static_cast<int>(action));
        return BSP_ERR_NOMEM;
    }
    const int failure = get_from_file(file_name(response), response.count, block);
    if (failure) {
        userlog_err(__func__, __LINE__, "get count from file failed. rv=%d", failure);
        pfree(block);
        return static_cast<uint32_t>(failure);
    }
    *data_out = block;
    *len_out = response.count;
    return BSP_OK;
}
