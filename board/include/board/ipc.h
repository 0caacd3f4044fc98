/* This is the board's IPC library. It sends one synchronous request to a service module and receives its answer. */
#ifndef BOARD_IPC_H
#define BOARD_IPC_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The calls return these values. With 0 the request was delivered and answered. With any other value the exchange
 * failed, and the status word and the response mean nothing. */
#define IPC_OK 0                   /* delivered and answered */
#define IPC_ERR_NO_SERVICE (-1)    /* nobody serves the module: no socket, or nobody listens on it */
#define IPC_ERR_ACCESS (-2)        /* the socket's owner and mode do not let this process connect */
#define IPC_ERR_TIMEOUT (-3)       /* no answer within the time-out; it is unknown whether the request took effect */
#define IPC_ERR_PEER_LOST (-4)     /* the service died or hung up before it answered; the effect is unknown */
#define IPC_ERR_REFUSED (-5)       /* the service refused the exchange by its access rules; it had no effect */
#define IPC_ERR_INCOMPATIBLE (-6)  /* the peer speaks another frame version or byte order; it had no effect */
#define IPC_ERR_BROKEN_ANSWER (-7) /* the answer is not a frame, or not one for this request; the effect is unknown */
#define IPC_ERR_TOO_LONG (-8)      /* the request is longer than a frame carries; nothing was sent */
#define IPC_ERR_SYSTEM (-9)        /* the operating system gave no socket or memory; nothing was sent */
#define IPC_ERR_SERVICE (-10)      /* the service could not handle the request at all */

/* This is the length in bytes of the longest request and of the longest answer. */
#define IPC_MAX_LENGTH 8192u

/* In every call, `module` and `msg_type` name the service and the channel, `request` is sent as `request_length`
 * bytes, and `status` receives the service's status word. `status` is not touched when the exchange fails.
 *
 * In the get calls, `response` receives at most `*response_length` bytes, and `*response_length` becomes the number
 * of bytes written. A length of 0 states no bound: the answer is delivered up to the length of the channel's record.
 * `response` may be `request` itself. Bytes that a short answer does not reach stay as they were.
 *
 * All calls are bounded in time and may be made from any thread. */
int32_t ipc_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                     uint32_t *status);
int32_t ipc_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length, void *response,
                     uint32_t *response_length, uint32_t *status);
int32_t ipc_dgram_get_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           void *response, uint32_t *response_length, uint32_t *status);
int32_t ipc_dgram_set_exec(uint32_t module, uint32_t msg_type, const void *request, uint32_t request_length,
                           uint32_t *status);

/* Returns a short English text for a value that one of the calls returned. It is never null and must never be freed. */
const char *ipc_strerror(int32_t value);

#ifdef __cplusplus
}
#endif

#endif
