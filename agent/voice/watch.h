// SPDX-License-Identifier: MIT
/*
 * What passes by of telephone calls: signalling goes to the decoder, and what
 * may be speech to the follower of streams.
 *
 * Of the frames of a live interface the usual capture keeps the beginning
 * alone. Signalling is needed whole, so a second capture with a filter of the
 * kernel's takes it, which costs nothing while nobody calls. The streams are
 * followed from the usual capture, from an interface's first signalling on.
 * Files have all of it in their frames.
 *
 * A call is of the interface that saw its first message. Others that see it
 * too, as two taps of one line do, count it no second time.
 */
#pragma once

#include "agent/capture/frame.h"
#include "agent/capture/sources.h"
#include "agent/voice/datagrams.h"
#include "agent/voice/decoder.h"
#include "agent/voice/h323_calls.h"
#include "agent/voice/launcher.h"
#include "agent/voice/measured.h"
#include "agent/voice/mgcp_calls.h"
#include "agent/voice/recent.h"
#include "agent/voice/rtp.h"
#include "agent/voice/sccp_calls.h"

#include <cstdint>
#include <map>
#include <string>

#include <pcap/pcap.h>

struct probe;
struct voice_watch;

struct watched_interface {
    voice_watch *watch = nullptr;
    int32_t index = 0;
    bool is_file = false;
    bool attached = false;               // to the usual capture
    const data_source *source = nullptr; // while it is attached
    pcap_t *signalling = nullptr;        // of a live interface that is up
    int64_t later = 0;                   // of a file's round, as its source has it
    uint32_t round = 0;                  // of that, from 0 on
    int64_t newest = 0;                  // time of the newest frame
    int64_t decoded = 0;                 // time of the newest message
    uint32_t last_signalling = 0;        // sysUpTime
};

struct voice_watch {
    probe *agent = nullptr;
    bool works = false; // the decoder can be started
    voice_launcher launcher;
    voice_decoder decoder;
    rtp_follower follower;
    sccp_tracker sccp;
    mgcp_tracker mgcp;
    h323_tracker h323;
    fragmented_datagrams fragmented;                  // of signalling
    recent_table<net_address, bool> h323_hosts;       // that signal by H.225
    recent_table<std::size_t, bool> h245_connections; // by their two ends
    std::map<int32_t, watched_interface> interfaces;
};

/** Has the launcher of the decoder forked: to be called first of all, if the agent is going to see frames. */
void prepare_watch(probe &agent);

/** Begins to watch the interfaces that there are, or says why not. */
void begin_watch(probe &agent);

/** Once a second. */
void tick_watch(probe &agent);

void watch_interface(probe &agent, int32_t index);
void leave_interface(probe &agent, int32_t index);
void end_watch(probe &agent);
