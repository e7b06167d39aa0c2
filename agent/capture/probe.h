/* The probe: all that the agent knows and does, which every handler gets to work on. */
#pragma once

#include "agent/rmon2/addrmap.h"
#include "agent/admin/administration.h"
#include "agent/rmon1/alarms.h"
#include "agent/smon_art/art.h"
#include "agent/rmon1/capture_buffers.h"
#include "agent/capture/capture_files.h"
#include "agent/rmon1/channels.h"
#include "agent/dsmon/aggregation.h"
#include "agent/dsmon/hosts.h"
#include "agent/dsmon/matrix.h"
#include "agent/dsmon/pdist.h"
#include "agent/dsmon/stats.h"
#include "agent/rmon1/etherstats.h"
#include "agent/rmon1/events.h"
#include "agent/rmon1/filters.h"
#include "agent/capture/frame_clock.h"
#include "agent/rmon1/history.h"
#include "agent/rmon2/hlhost.h"
#include "agent/rmon2/hlmatrix.h"
#include "agent/rmon1/hosts.h"
#include "agent/rmon1/hosttopn.h"
#include "agent/capture/interfaces.h"
#include "agent/core/loop.h"
#include "agent/rmon1/matrix.h"
#include "agent/rmon2/pdist.h"
#include "agent/nde/nde.h"
#include "agent/nde/netflow.h"
#include "agent/capture/protocols.h"
#include "agent/smon_art/smon.h"
#include "agent/admin/snmp_settings.h"
#include "agent/capture/sources.h"
#include "agent/core/state.h"
#include "agent/rmon1/system_group.h"
#include "agent/voice/voice.h"

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
