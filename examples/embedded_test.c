/* This test has a simulated OLT in its own process. An ONU that is bound loses its power, and an alarm reports it.
 *
 * It links pkg-config's ponsim: the library, the host edition of the board's libraries, and the simulator. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "board/datastore.h"
#include "bsp_pon.h"
#include "bsp_testing/simulator.h"

static const char scenario[] = "[[olt]]\n"
                               "ports = 1\n"
                               "[[olt.port]]\n"
                               "number = 1\n"
                               "[[olt.port.onu]]\n"
                               "name = \"kitchen\"\n"
                               "mac = \"02:00:5e:10:00:01\"\n";

static const uint8_t kitchen[6] = {0x02, 0x00, 0x5e, 0x10, 0x00, 0x01};

/* Returns 1 when this alarm is among the alarms of port 1. */
static int has_alarm(const char *name)
{
    bsp_pon_msg record;
    db_handle *db = NULL;
    uint32_t row;
    int found = 0;

    memset(&record, 0, sizeof record);
    record.pon_port = 1;
    if (bsp_pon_get_onu_alarm(&db, &record) == BSP_OK)
        for (row = 0; row < db_rows(db); ++row)
            if (strcmp(db_get_text(db, row, "name"), name) == 0) found = 1;
    db_free(db);
    return found;
}

/* Returns null when everything is as expected, or otherwise what is not. */
static const char *test_power_cut(bsp_simulator *simulator)
{
    char said[256];

    if (bsp_pon_bind_onu_spec_id(1, 5, kitchen, NULL, NULL, 0, NULL) != BSP_OK) return "the ONU is not bound";
    if (bsp_simulator_step(simulator, NULL, 1500) != 0) return "time does not pass";
    if (has_alarm("dying_gasp")) return "there is an alarm before anything happened";
    if (bsp_simulator_control(simulator, NULL, "power 1 kitchen off", said, sizeof said) != 0) return "power stays";
    if (bsp_simulator_step(simulator, NULL, 1500) != 0) return "time does not pass";
    if (!has_alarm("dying_gasp")) return "there is no alarm";
    return bsp_simulator_now(simulator, NULL) == 3000 ? NULL : "time has passed by itself";
}

int main(void)
{
    char error[256];
    const char *wrong;
    bsp_simulator *simulator;
    bsp_simulator_options options = BSP_SIMULATOR_OPTIONS;

    options.scenario = scenario;
    simulator = bsp_simulator_start(&options, error, sizeof error);
    if (simulator == NULL) {
        fprintf(stderr, "embedded_test: %s\n", error);
        return 1;
    }
    wrong = test_power_cut(simulator);
    bsp_simulator_stop(simulator);
    printf("embedded_test: %s\n", wrong == NULL ? "passed" : wrong);
    return wrong == NULL ? 0 : 1;
}
