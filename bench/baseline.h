/* These are a few operations as a C programmer would write them. Each is one function with the same clears, stores and
   calls. */
#ifndef BENCH_BASELINE_H
#define BENCH_BASELINE_H

#include "bsp_pon.h"

#ifdef __cplusplus
extern "C" {
#endif

uint32_t c_bind(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac, const char *text_a, const char *text_b,
                uint32_t value, const char *text_c);
/* This is the same operation with strcpy. A caller whose texts fit into the fields would not notice a difference. */
uint32_t c_bind_unbounded(uint32_t pon_port, uint32_t onu_id, const uint8_t *mac, const char *text_a,
                          const char *text_b, uint32_t value, const char *text_c);
uint32_t c_release(uint32_t pon_port, uint32_t onu_id);
uint32_t c_release_by_mac(uint32_t pon_port, const uint8_t *mac);
uint32_t c_reboot_batch(const bsp_pon_msg *record);
uint32_t c_cfg(uint32_t cmd, uint32_t pon_port, const void *data, uint32_t length);
uint32_t c_get(bsp_pon_msg *record);
uint32_t c_get_json(uint32_t cmd, uint32_t pon_port, uint32_t spare, db_handle **db_out);
uint32_t c_get_file(uint32_t cmd, uint32_t pon_port, char *name_out);
uint32_t c_white(uint32_t pon_port, uint32_t onu_id, void *resp);
uint32_t c_view(db_handle **db_out, const bsp_pon_msg *record);
uint32_t c_view_web(db_handle **db_out, bsp_pon_msg *record);
uint32_t c_view_snmp(db_handle **db_out);
uint32_t c_pon_stats(uint32_t port, void *out);
uint32_t c_own_port(uint32_t pon_port, uint32_t *value);
uint32_t c_upgrade(const void *block);
uint32_t c_lol_mode(uint32_t pon_port, uint32_t id, uint32_t mode, const void *params);
uint32_t c_onu_sn(uint32_t pon_port, uint32_t onu_id, void *out);
uint32_t c_onu_vlan(uint32_t pon_port, uint32_t onu_id, uint16_t uni_port, void *out);
uint32_t c_onu_mgmt_set(uint32_t pon_port, uint32_t onu_id, const void *mgmt);

#ifdef __cplusplus
}
#endif

#endif
