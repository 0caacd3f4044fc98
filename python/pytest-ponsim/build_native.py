"""Makes the C of the extension that starts simulators. Called as a script, with the output, or by setuptools, which
calls `installed`.
"""

import sys

import cffi

DECLARATIONS = """
    typedef struct bsp_simulator_options {
        const char *scenario_file;
        const char *scenario;
        uint64_t seed;
        uint32_t ports;
        uint32_t arrivals;
        uint32_t silent;
        const char *state;
        double speed;
        const char *socket_dir;
        const char *record;
    } bsp_simulator_options;
    typedef struct bsp_simulator bsp_simulator;
    static const uint32_t BSP_SIMULATOR_NONE;
    bsp_simulator *bsp_simulator_start(const bsp_simulator_options *options, char *error, size_t error_size);
    bsp_simulator *bsp_simulator_spawn(const bsp_simulator_options *options, const char *program, char *error,
                                       size_t error_size);
    void bsp_simulator_stop(bsp_simulator *simulator);
    int bsp_simulator_control(bsp_simulator *simulator, const char *olt, const char *line, char *said, size_t size);
    int bsp_simulator_step(bsp_simulator *simulator, const char *olt, uint64_t milliseconds);
    int64_t bsp_simulator_now(bsp_simulator *simulator, const char *olt);
    const char *bsp_simulator_directory(const bsp_simulator *simulator, const char *olt);
"""

SOURCE = '#include "bsp_testing/simulator.h"\n'


def declared():
    ffi = cffi.FFI()
    ffi.cdef(DECLARATIONS)
    return ffi


def installed():
    """Returns what setuptools compiles, against the library that pkg-config knows."""
    ffi = declared()
    ffi.set_source_pkgconfig("pytest_ponsim._native", ["ponsim"], SOURCE)
    return ffi


if __name__ == "__main__":
    ffi = declared()
    ffi.set_source("pytest_ponsim._native", SOURCE)
    ffi.emit_c_code(sys.argv[1])
