// SPDX-License-Identifier: MIT
/* The settings of a capture, with what newer headers of libpcap say of them: their results have to be looked
 * at. */
#pragma once

#include <pcap/pcap.h>

extern "C" {
[[nodiscard]] int pcap_set_snaplen(pcap_t *, int);
[[nodiscard]] int pcap_set_promisc(pcap_t *, int);
[[nodiscard]] int pcap_set_immediate_mode(pcap_t *, int);
[[nodiscard]] int pcap_set_buffer_size(pcap_t *, int);
[[nodiscard]] int pcap_set_timeout(pcap_t *, int);
[[nodiscard]] int pcap_setnonblock(pcap_t *, int, char *);
[[nodiscard]] int pcap_setfilter(pcap_t *, bpf_program *);
[[nodiscard]] int pcap_activate(pcap_t *);
}
