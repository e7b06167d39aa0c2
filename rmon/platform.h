/*
 * Files and commands of the appliance.
 *
 * Their paths are fixed: nothing that a script, a request or the environment
 * says leads elsewhere. A module made for tests (configure
 * --with-rmon-test-root=DIR) has DIR in front of all of them, so that the
 * tests can put files of their own there.
 */
#pragma once

#ifdef HAVE_CONFIG_H
#include "config.h"
#endif

#ifndef RMON_TEST_ROOT
#define RMON_TEST_ROOT ""
#endif

/** Descriptions of the protocols, in the text form of RFC 2895. */
inline constexpr char protocol_description_file[] = RMON_TEST_ROOT "/usr/local/norv/etc/pdstruct.txt";

/** Identity of the appliance. */
inline constexpr char settings_file[] = RMON_TEST_ROOT "/usr/local/norv/etc/norv_settings";

/* Shell commands that write the network settings out, by the kind of appliance. */
inline constexpr char net_conf_init_command[] =
    RMON_TEST_ROOT "/usr/local/norv/bin/net_conf_init -q stop >/dev/null 2>/dev/null";
inline constexpr char vd_net_conf_command[] =
    RMON_TEST_ROOT "/usr/local/norv/bin/vd_net_conf -q write >/dev/null 2>/dev/null";
