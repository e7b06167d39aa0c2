// SPDX-License-Identifier: MIT
#include "tests/native/check.h"

#include <cstdio>

static int passed, failed;

void check(bool ok, const std::string &what)
{
    (ok ? passed : failed)++;
    if (!ok)
        printf("failed: %s\n", what.c_str());
}

bytes &bytes::unit(uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        all.push_back(static_cast<uint8_t>(value >> shift));
    return *this;
}

bytes &bytes::hyper(uint64_t value)
{
    return unit(static_cast<uint32_t>(value >> 32)).unit(static_cast<uint32_t>(value));
}

bytes &bytes::text(const std::string &value)
{
    unit(static_cast<uint32_t>(value.size()));
    all.insert(all.end(), value.begin(), value.end());
    while (all.size() % 4)
        all.push_back(0);
    return *this;
}

bytes &bytes::units(const std::vector<uint8_t> &value)
{
    for (const uint8_t byte : value)
        unit(byte);
    return *this;
}

bytes &bytes::signed_units(const std::vector<uint8_t> &value)
{
    for (const uint8_t byte : value)
        unit(byte < 128 ? byte : 0xffffff00u | byte);
    return *this;
}

bytes &bytes::list(const std::vector<uint8_t> &value)
{
    return unit(static_cast<uint32_t>(value.size())).units(value);
}

bytes &bytes::add(const bytes &other)
{
    all.insert(all.end(), other.all.begin(), other.all.end());
    return *this;
}

int main()
{
    test_wire();
    test_streams();
    test_straight();
    test_stubs();
    test_memory();
    test_transport();
    test_settings();
    test_families();
    test_decoder();
    test_datagrams();
    test_sccp();
    test_mgcp();
    test_rtp();
    test_rtp_like_tshark();
    test_h323();
    test_networks();
    test_learned();
    test_sums();
    printf("%d passed, %d failed\n", passed, failed);
    return failed ? 1 : 0;
}
