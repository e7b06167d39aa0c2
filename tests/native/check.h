// SPDX-License-Identifier: MIT
/* What the native tests have in common: counting checks, and an encoder of their own. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/** Counts a check; prints what failed. */
void check(bool passed, const std::string &what);

/* The tests of each file; main() runs them all. */
void test_wire();
void test_streams();
void test_straight();
void test_stubs();
void test_memory();
void test_transport();
void test_settings();
void test_families();
void test_decoder();
void test_datagrams();
void test_sccp();
void test_mgcp();
void test_rtp();
void test_rtp_like_tshark();
void test_h323();
void test_networks();
void test_learned();
void test_sums();

/** XDR as RFC 4506 puts it, written for the tests alone. */
struct bytes {
    std::vector<uint8_t> all;

    bytes &unit(uint32_t value);
    bytes &hyper(uint64_t value);
    bytes &text(const std::string &value);
    /** A unit for each byte, zero-extended. */
    bytes &units(const std::vector<uint8_t> &value);
    /** A unit for each character, sign-extended. */
    bytes &signed_units(const std::vector<uint8_t> &value);
    /** The count, then the units. */
    bytes &list(const std::vector<uint8_t> &value);
    bytes &add(const bytes &other);
};
