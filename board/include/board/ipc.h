/* The board's IPC library: one synchronous request to a service module and its answer. */
#ifndef BOARD_IPC_H
#define BOARD_IPC_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What the calls return. 0: the request was delivered and answered. Any other value: the exchange failed,
 * and the status word and the response are worth nothing. */
#define IPC_OK 0                   /* delivered and answered */
#define IPC_ERR_NO_SERVICE (-1)    /* nobody serves the module: no socket, or nobody listens on it */
#define IPC_ERR_ACCESS (-2)        /* the socket's owner and mode do not let this process connect */
#define IPC_ERR_TIMEOUT (-3)       /* no answer within the time-out; whether the request took effect is unknown */
#define IPC_ERR_PEER_LOST (-4)     /* the service died or hung up before it answered; effect unknown */
#define IPC_ERR_REFUSED (-5)       /* the service refused the exchange by its access rules; it had no effect */
#define IPC_ERR_INCOMPATIBLE (-6)  /* the peer speaks another frame version or byte order; it had no effect */
#define IPC_ERR_BROKEN_ANSWER (-7) /* the answer is not a frame, or not one for this request; effect unknown */
#define IPC_ERR_TOO_LONG (-8)      /* the request is longer than a frame carries; nothing was sent */
#define IPC_ERR_SYSTEM (-9)        /* the operating system gave no socket or memory; nothing was sent */
#define IPC_ERR_SERVICE (-10)      /* the service could not handle the request at all */

/* The longest request and the longest answer, in bytes. */
#define IPC_MAX_LENGTH 8192u

/* Every call: `module` and `msg_type` name the service and the channel; `request` is sent as `request_length`
 * bytes; `status` receives the service's status word (untouched when the exchange fails).
 *
 * The get calls: `response` receives at most `*response_length` bytes, and `*response_length` becomes the number
 * of bytes written. A length of 0 states no bound: the answer is delivered up to the length of the channel's
 * record. `response` may be `request` itself. What a short answer does not reach stays as it was.
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

/* A short English text for a value that one of the calls returned; never null, never to be freed. */
const char *ipc_strerror(int32_t value);

#ifdef __cplusplus
}
#endif

#endif
