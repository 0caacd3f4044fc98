/* Simulated OLTs for tests: starts a ponsim in this process, or as a child of it, and lets things happen to its OLTs.
 *
 *     char error[256];
 *     bsp_simulator_options options = BSP_SIMULATOR_OPTIONS;
 *     options.seed = 7;
 *     bsp_simulator *simulator = bsp_simulator_start(&options, error, sizeof error);
 *     if (simulator == NULL) ...                                  the reason is in `error`
 *     ... calls of bsp_pon.h reach the simulated OLT ...
 *     bsp_simulator_control(simulator, NULL, "power 1 02:00:5e:10:00:01 off", error, sizeof error);
 *     bsp_simulator_step(simulator, NULL, 5000);
 *     ... its alarms are there ...
 *     bsp_simulator_stop(simulator);
 *
 * Link libponsim (pkg-config ponsim) beside libbsp_pon and the host edition of the board's libraries. Any thread may
 * call any of these functions at any time, but for bsp_simulator_stop: the last call with a simulator. Several
 * simulators may run at once. Texts that come in are copied. */
#ifndef BSP_TESTING_SIMULATOR_H
#define BSP_TESTING_SIMULATOR_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What is simulated, and where. All zero, which is what BSP_SIMULATOR_OPTIONS makes it: the OLT that ponsim serves
 * without options, in memory, with the time standing still but for steps. */
typedef struct bsp_simulator_options {
    const char *scenario_file; /* what the OLTs are and what happens, see ponsim-scenario(5); null: none */
    const char *scenario;      /* the same as a text, in its place; errors call it "scenario" */
    /* Of the one OLT without a scenario; 0: as ponsim(8) says. BSP_SIMULATOR_NONE stands for no arrivals, and for no
     * silent ones. */
    uint64_t seed;
    uint32_t ports;
    uint32_t arrivals;      /* ONUs that have arrived at each port */
    uint32_t silent;        /* percent of them that go offline when bound */
    const char *state;      /* the file that keeps the OLT, or the folder for several OLTs; null: in memory only */
    double speed;           /* how many times as fast as the time of day model time passes; 0: by steps only */
    const char *socket_dir; /* the folder of sockets: made where it is missing, and left there at the end; null: a new
                               one for this user alone, which goes at the end, but
                               not with a process that is killed */
} bsp_simulator_options;

#ifdef __cplusplus
#define BSP_SIMULATOR_OPTIONS                                                                                          \
    {                                                                                                                  \
    }
#else
#define BSP_SIMULATOR_OPTIONS                                                                                          \
    {                                                                                                                  \
        0                                                                                                              \
    }
#endif

#define BSP_SIMULATOR_NONE 0xFFFFFFFFu

typedef struct bsp_simulator bsp_simulator;

/* Starts to serve in this process, on threads that take no signals. `options` may be null: all zero. When it returns
 * the library reaches the OLT, or the first one of several, from all threads (board_ipc_use_directory, see
 * board/service.h). To be released by bsp_simulator_stop. Null on failure, with the reason in `error`, cut to
 * `error_size` bytes with its final zero; both may be null and 0. */
bsp_simulator *bsp_simulator_start(const bsp_simulator_options *options, char *error, size_t error_size);

/* The same as a process of its own: `program`, which is looked for in PATH when it has no slash; null: "ponsim". What
 * it logs goes to this process's standard error. It ends with this process, whatever becomes of it. Failures are also:
 * the program cannot be run, ends, or does not serve within 30 s; then the reason is what it said. */
bsp_simulator *bsp_simulator_spawn(const bsp_simulator_options *options, const char *program, char *error,
                                   size_t error_size);

/* Stops it, waits for its end, and releases what it has: threads, process, descriptors, a folder that it made. Calls
 * that are under way in other threads end with an IPC failure, and so do all later ones, until another simulator is
 * started or board_ipc_use_directory called. Null is allowed. In a process that was forked off after the start it does
 * nothing: the simulator is the parent's. */
void bsp_simulator_stop(bsp_simulator *simulator);

/* The functions below take an OLT by its name in the scenario; null: the only one. */

/* Carries out a line of `ponsim ctl`, as "power 1 kitchen off"; "help" lists the commands. 0, or -1 when it is refused
 * or reaches nobody. What it says, or the reason, is in `said`, cut to `size` bytes with its final zero; both may be
 * null and 0. Like all calls it is bounded by BOARD_IPC_TIMEOUT_MS. */
int bsp_simulator_control(bsp_simulator *simulator, const char *olt, const char *line, char *said, size_t size);

/* Lets model time pass, and happen what happens by then; of all its OLTs where `olt` is null. 0, or -1 on failure, for
 * which a line to the log says the reason. */
int bsp_simulator_step(bsp_simulator *simulator, const char *olt, uint64_t milliseconds);

/* How much model time has passed, in milliseconds; -1 on failure, as above. */
int64_t bsp_simulator_now(bsp_simulator *simulator, const char *olt);

/* The OLT's folder of sockets, for board_ipc_use_directory, board_ipc_use_thread_directory, and the environment of
 * other processes (BOARD_IPC_DIR). Null when there is none of that name, or several and no name. The text lives until
 * the simulator is stopped. */
const char *bsp_simulator_directory(const bsp_simulator *simulator, const char *olt);

#ifdef __cplusplus
}
#endif

#endif
