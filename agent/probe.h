/* The probe: all that the agent knows and does, which every handler gets to work on. */
#pragma once

#include "agent/addrmap.h"
#include "agent/administration.h"
#include "agent/alarms.h"
#include "agent/art.h"
#include "agent/capture_buffers.h"
#include "agent/capture_files.h"
#include "agent/channels.h"
#include "agent/dsmon_aggregation.h"
#include "agent/dsmon_hosts.h"
#include "agent/dsmon_matrix.h"
#include "agent/dsmon_pdist.h"
#include "agent/dsmon_stats.h"
#include "agent/etherstats.h"
#include "agent/events.h"
#include "agent/filters.h"
#include "agent/frame_clock.h"
#include "agent/history.h"
#include "agent/hlhost.h"
#include "agent/hlmatrix.h"
#include "agent/hosts.h"
#include "agent/hosttopn.h"
#include "agent/interfaces.h"
#include "agent/loop.h"
#include "agent/matrix.h"
#include "agent/pdist.h"
#include "agent/nde.h"
#include "agent/netflow.h"
#include "agent/protocols.h"
#include "agent/smon.h"
#include "agent/snmp_settings.h"
#include "agent/sources.h"
#include "agent/state.h"
#include "agent/system_group.h"
#include "agent/voice.h"

#include <cstdint>
#include <string>

struct probe {
    event_loop loop;
    int64_t started = 0; // of the clock behind up_time(), in hundredths of a second
    system_texts system;
    administration settings;
    trapdest_table trapdests;
    community_table communities;
    nde_tables nde;
    netflow_learning netflow;
    voice_monitors voice;
    state_store state;
    interface_table interfaces;
    protocol_directory protocols;
    source_table sources;
    capture_files files;
    etherstats_table etherstats;
    history_table history;
    host_table hosts;
    topn_table hosttopn;
    matrix_table matrix;
    alarm_table alarms;
    event_table events;
    filter_table filters;
    channel_table channels;
    buffer_table buffers;
    int captures = -1; // the directory of --captures
    dsmon_aggregation aggregation;
    dsmon_stats_table dsmon_stats;
    dsmon_pdist_table dsmon_pdist;
    dsmon_host_table dsmon_hosts;
    dsmon_matrix_table dsmon_matrix;
    vlan_table vlan_stats;
    priority_table priority_stats;
    art_table art;
    struct frame_clock frame_clock;
    distribution_table distributions;
    address_map addresses;
    address_watch_table address_watches;
    hl_host_table hl_hosts;
    hl_matrix_table hl_matrices;
};

/** sysUpTime: hundredths of a second since the agent's start, modulo 2^32. */
uint32_t up_time(const probe &agent);

/**
 * Whether so many seconds passed between two values of sysUpTime that were
 * taken on ticks, which come a few hundredths early or late.
 */
bool seconds_passed(uint32_t since, uint32_t now, uint32_t seconds);

/**
 * Finds the interfaces, of this machine or as files play them, and begins to
 * measure; files are not read yet (begin_capture_files). An empty text, or what
 * went wrong in one line. The probe must not move from then on.
 */
std::string start_probe(probe &agent, bool may_capture, const file_reading &reading);

void stop_probe(probe &agent);
