/* The plain client that the module is measured against: routines with one primitive per field. */
#pragma once

#include <rpc/types.h>
#include <rpc/xdr.h>
#include <rpc/auth.h>
#include <rpc/clnt.h>

#include <cstdint>

struct raw_bytes {
    u_int length;
    u_char *value;
};

struct raw_host {
    int status;
    u_int timeMark;
    raw_bytes nlHostAddress;
    u_quad_t inPkts, outPkts, inOctets, outOctets, outMacNonUnicastPkts;
    u_int createTime;
    int hlHostControlIndex, protocolDirLocalIndex, protocolDirLocalIndex2;
};

struct raw_hosts {
    u_int length;
    raw_host *value;
};

struct raw_endpoint {
    u_char ipAddr[16];
    u_int length, port;
};

struct raw_media {
    raw_endpoint h245, rtp;
    u_int codec;
    raw_endpoint rtcp_sr, rtcp_rr;
};

struct raw_quality {
    u_int ssrc, pkt_sent, oct_sent, pkt_lost, fraction_lost, jitter, reserved_1, reserved_2, reserved_3;
};

struct raw_call {
    raw_endpoint f_q931;
    char f_num[132], f_alias[81];
    raw_endpoint reverse_q931;
    char reverse_num[132], reverse_alias[81];
    u_int call_state, call_status, call_reference;
    u_char call_id[16], conference_id[16];
    u_int conference_goal;
    int faststart, tunneling;
    u_int call_type;
    u_char forward_product_id[257], forward_version_id[257], reverse_product_id[257], reverse_version_id[257];
    u_int forward_session_id, forward_channel, reverse_session_id, reverse_channel;
    raw_media forward, reverse;
    u_int start_time, end_time;
    raw_quality forward_quality, reverse_quality;
    u_int flag, forward_num_samples, reverse_num_samples;
};

struct raw_phone {
    int vers;
    u_int index;
    raw_endpoint q931;
    char num[132], alias[81];
    u_int aggregate[7];
    int num_hist_row;
    raw_call history[5];
};

struct raw_phones {
    u_int length;
    raw_phone *value;
};

/** A call of the bench: its procedure, the key's encoder and the reply's decoder. */
bool raw_call_hosts(CLIENT *client, u_int rows, raw_hosts &reply);
bool raw_call_phones(CLIENT *client, u_int rows, raw_phones &reply);
void raw_free(raw_hosts &reply);
void raw_free(raw_phones &reply);

/** Sends the same call by hand and only receives the bytes of its reply; their number, 0 on failure. */
size_t floor_call(int fd, u_int procedure, u_int rows);
