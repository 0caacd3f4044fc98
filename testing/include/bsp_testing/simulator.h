/* These functions give tests simulated OLTs. They start a ponsim in this process, or as a child of it, and make things
 * happen to its OLTs.
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
 * call any of these functions at any time, except that bsp_simulator_stop must be the last call with a simulator.
 * Several simulators may run at once. Texts that are passed in are copied. */
#ifndef BSP_TESTING_SIMULATOR_H
#define BSP_TESTING_SIMULATOR_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The options say what is simulated, and where. BSP_SIMULATOR_OPTIONS sets all of them to zero. That stands for the OLT
 * that ponsim serves without options, in memory, with a time that only moves in steps. */
typedef struct bsp_simulator_options {
    const char *scenario_file; /* what the OLTs are and what happens, see ponsim-scenario(5); null: none */
    const char *scenario;      /* the same as a text, instead of a file; errors call it "scenario" */
    /* The next four options describe the one OLT when there is no scenario. 0 stands for the default in ponsim(8).
     * BSP_SIMULATOR_NONE stands for no arrivals, and for no silent ONUs. */
    uint64_t seed;
    uint32_t ports;
    uint32_t arrivals;      /* ONUs that have arrived at each port */
    uint32_t silent;        /* percent of them that go offline when bound */
    const char *state;      /* the file that keeps the OLT, or the folder for several OLTs; null: in memory only */
    double speed;           /* how many times faster than the time of day model time passes; 0: in steps only */
    const char *socket_dir; /* the folder of sockets: made when it is missing, and left there at the end; null: a new
                               one for this user alone, which is removed at the end, or,
                               when the process is killed, by the next simulator */
    const char *record;     /* the file to which exchanges are appended, as by ponsim --record; null: none. Several OLTs
                               have a file each, with the name of the OLT behind a dot */
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

/* Starts to serve in this process, on threads that take no signals. `options` may be null, which means all zero. After
 * the return the library reaches the OLT, or the first of several, from all threads (board_ipc_use_directory, see
 * board/service.h). bsp_simulator_stop releases the simulator. Returns null on failure, with the reason in `error`, cut
 * to `error_size` bytes with its final zero. `error` and `error_size` may be null and 0. */
bsp_simulator *bsp_simulator_start(const bsp_simulator_options *options, char *error, size_t error_size);

/* As above, but serves in a process of its own, which runs `program`. The program is looked for in PATH when its name
 * has no slash. Null stands for "ponsim". Its log goes to this process's standard error. It ends when this process
 * ends, however that happens. It is also a failure when the program cannot be run, ends, or does not serve within 30 s.
 * Then the reason is the program's output. */
bsp_simulator *bsp_simulator_spawn(const bsp_simulator_options *options, const char *program, char *error,
                                   size_t error_size);

/* Stops the simulator, waits for its end, and releases what it has: threads, process, descriptors, and a folder that it
 * made. Calls that are under way in other threads end with an IPC failure, and so do all later ones, until another
 * simulator is started or board_ipc_use_directory is called. Null is allowed. In a process that was forked after the
 * start this does nothing, because the simulator belongs to the parent. */
void bsp_simulator_stop(bsp_simulator *simulator);

/* The functions below take the name of an OLT in the scenario. Null stands for the only OLT. */

/* Carries out a line of `ponsim ctl`, such as "power 1 kitchen off". The line "help" lists the commands. Returns 0, or
 * -1 when the line is refused or reaches nobody. The answer, or the reason, is in `said`, cut to `size` bytes with its
 * final zero. `said` and `size` may be null and 0. Like all calls this is bounded by BOARD_IPC_TIMEOUT_MS. */
int bsp_simulator_control(bsp_simulator *simulator, const char *olt, const char *line, char *said, size_t size);

/* Lets model time pass, with everything that happens by then. When `olt` is null, it passes for all OLTs. Returns 0, or
 * -1 on failure. Then a line in the log says the reason. */
int bsp_simulator_step(bsp_simulator *simulator, const char *olt, uint64_t milliseconds);

/* Returns how much model time has passed, in milliseconds, or -1 on failure, as above. */
int64_t bsp_simulator_now(bsp_simulator *simulator, const char *olt);

/* Returns the OLT's folder of sockets, for board_ipc_use_directory, board_ipc_use_thread_directory, and the environment
 * of other processes (BOARD_IPC_DIR). Returns null when no OLT has that name, or when there are several and no name is
 * given. The text lives until the simulator is stopped. */
const char *bsp_simulator_directory(const bsp_simulator *simulator, const char *olt);

#ifdef __cplusplus
}
#endif

#endif
