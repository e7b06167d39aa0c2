#include "bench/ext/raw.h"

#include <arpa/inet.h>
#include <unistd.h>

#include <cstring>

namespace {

constexpr u_int hlhost_get = 34;
constexpr u_int h323_phone_rec_get = 116;
constexpr timeval time_out{25, 0};

template <class Record> xdrproc_t routine(bool_t (*function)(XDR *, Record *))
{
    return reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(function));
}

bool_t xdr_bytes(XDR *x, raw_bytes *r)
{
    return xdr_array(x, reinterpret_cast<char **>(&r->value), &r->length, ~0u, 1, routine(xdr_u_char));
}

bool_t xdr_host(XDR *x, raw_host *r)
{
    return xdr_int(x, &r->status) && xdr_u_int(x, &r->timeMark) && xdr_bytes(x, &r->nlHostAddress)
           && xdr_u_longlong_t(x, &r->inPkts) && xdr_u_longlong_t(x, &r->outPkts)
           && xdr_u_longlong_t(x, &r->inOctets) && xdr_u_longlong_t(x, &r->outOctets)
           && xdr_u_longlong_t(x, &r->outMacNonUnicastPkts) && xdr_u_int(x, &r->createTime)
           && xdr_int(x, &r->hlHostControlIndex) && xdr_int(x, &r->protocolDirLocalIndex)
           && xdr_int(x, &r->protocolDirLocalIndex2);
}

bool_t xdr_hosts(XDR *x, raw_hosts *r)
{
    return xdr_array(
        x, reinterpret_cast<char **>(&r->value), &r->length, ~0u, sizeof(raw_host), routine(xdr_host));
}

template <u_int N> bool_t xdr_units(XDR *x, u_char (&r)[N])
{
    return xdr_vector(x, reinterpret_cast<char *>(r), N, 1, routine(xdr_u_char));
}

template <u_int N> bool_t xdr_units(XDR *x, char (&r)[N])
{
    return xdr_vector(x, r, N, 1, routine(xdr_char));
}

bool_t xdr_endpoint(XDR *x, raw_endpoint *r)
{
    return xdr_units(x, r->ipAddr) && xdr_u_int(x, &r->length) && xdr_u_int(x, &r->port);
}

bool_t xdr_media(XDR *x, raw_media *r)
{
    return xdr_endpoint(x, &r->h245) && xdr_endpoint(x, &r->rtp) && xdr_u_int(x, &r->codec)
           && xdr_endpoint(x, &r->rtcp_sr) && xdr_endpoint(x, &r->rtcp_rr);
}

bool_t xdr_quality(XDR *x, raw_quality *r)
{
    return xdr_u_int(x, &r->ssrc) && xdr_u_int(x, &r->pkt_sent) && xdr_u_int(x, &r->oct_sent)
           && xdr_u_int(x, &r->pkt_lost) && xdr_u_int(x, &r->fraction_lost) && xdr_u_int(x, &r->jitter)
           && xdr_u_int(x, &r->reserved_1) && xdr_u_int(x, &r->reserved_2) && xdr_u_int(x, &r->reserved_3);
}

bool_t xdr_call(XDR *x, raw_call *r)
{
    return xdr_endpoint(x, &r->f_q931) && xdr_units(x, r->f_num) && xdr_units(x, r->f_alias)
           && xdr_endpoint(x, &r->reverse_q931) && xdr_units(x, r->reverse_num)
           && xdr_units(x, r->reverse_alias) && xdr_u_int(x, &r->call_state) && xdr_u_int(x, &r->call_status)
           && xdr_u_int(x, &r->call_reference) && xdr_units(x, r->call_id) && xdr_units(x, r->conference_id)
           && xdr_u_int(x, &r->conference_goal) && xdr_int(x, &r->faststart) && xdr_int(x, &r->tunneling)
           && xdr_u_int(x, &r->call_type) && xdr_units(x, r->forward_product_id)
           && xdr_units(x, r->forward_version_id) && xdr_units(x, r->reverse_product_id)
           && xdr_units(x, r->reverse_version_id) && xdr_u_int(x, &r->forward_session_id)
           && xdr_u_int(x, &r->forward_channel) && xdr_u_int(x, &r->reverse_session_id)
           && xdr_u_int(x, &r->reverse_channel) && xdr_media(x, &r->forward) && xdr_media(x, &r->reverse)
           && xdr_u_int(x, &r->start_time) && xdr_u_int(x, &r->end_time)
           && xdr_quality(x, &r->forward_quality) && xdr_quality(x, &r->reverse_quality)
           && xdr_u_int(x, &r->flag) && xdr_u_int(x, &r->forward_num_samples)
           && xdr_u_int(x, &r->reverse_num_samples);
}

bool_t xdr_phone(XDR *x, raw_phone *r)
{
    return xdr_int(x, &r->vers) && xdr_u_int(x, &r->index) && xdr_endpoint(x, &r->q931)
           && xdr_units(x, r->num) && xdr_units(x, r->alias)
           && xdr_vector(x, reinterpret_cast<char *>(r->aggregate), 7, sizeof(u_int), routine(xdr_u_int))
           && xdr_int(x, &r->num_hist_row)
           && xdr_vector(x, reinterpret_cast<char *>(r->history), 5, sizeof(raw_call), routine(xdr_call));
}

bool_t xdr_phones(XDR *x, raw_phones *r)
{
    return xdr_array(
        x, reinterpret_cast<char **>(&r->value), &r->length, ~0u, sizeof(raw_phone), routine(xdr_phone));
}

struct host_key {
    int hlHostControlIndex;
    u_int timeMark;
    int protocolDirLocalIndex, protocolDirLocalIndex2;
    raw_bytes nlHostAddress;
    int getType, applicationLayer, count;
};

bool_t xdr_host_key(XDR *x, host_key *r)
{
    return xdr_int(x, &r->hlHostControlIndex) && xdr_u_int(x, &r->timeMark)
           && xdr_int(x, &r->protocolDirLocalIndex) && xdr_int(x, &r->protocolDirLocalIndex2)
           && xdr_bytes(x, &r->nlHostAddress) && xdr_int(x, &r->getType) && xdr_int(x, &r->applicationLayer)
           && xdr_int(x, &r->count);
}

struct phone_key {
    int index, getType, count;
};

bool_t xdr_phone_key(XDR *x, phone_key *r)
{
    return xdr_int(x, &r->index) && xdr_int(x, &r->getType) && xdr_int(x, &r->count);
}

bool read_all(int fd, char *to, size_t size)
{
    while (size) {
        const ssize_t got = read(fd, to, size);
        if (got <= 0)
            return false;
        to += got;
        size -= static_cast<size_t>(got);
    }
    return true;
}

} // namespace

bool raw_call_hosts(CLIENT *client, u_int rows, raw_hosts &reply)
{
    host_key key{1, 0, 1, 0, {0, nullptr}, 3, 0, static_cast<int>(rows)};
    reply = {};
    return clnt_call(client, hlhost_get, routine(xdr_host_key), &key, routine(xdr_hosts), &reply, time_out)
           == RPC_SUCCESS;
}

bool raw_call_phones(CLIENT *client, u_int rows, raw_phones &reply)
{
    phone_key key{0, 3, static_cast<int>(rows)};
    reply = {};
    return clnt_call(
               client, h323_phone_rec_get, routine(xdr_phone_key), &key, routine(xdr_phones), &reply,
               time_out)
           == RPC_SUCCESS;
}

void raw_free(raw_hosts &reply)
{
    xdr_free(routine(xdr_hosts), &reply);
}

void raw_free(raw_phones &reply)
{
    xdr_free(routine(xdr_phones), &reply);
}

size_t floor_call(int fd, u_int procedure, u_int rows)
{
    // Mark, xid, CALL, RPC version 2, program, version, procedure, two null authenticators, the count.
    const u_int call[12] = {0x80000000u | 44, 1, 0, 2, 99999, 1, procedure, 0, 0, 0, 0, rows};
    u_int sent[12];
    for (int i = 0; i < 12; i++)
        sent[i] = htonl(call[i]);
    if (write(fd, sent, sizeof sent) != static_cast<ssize_t>(sizeof sent))
        return 0;

    static char buffer[65536];
    size_t total = 0;
    for (bool last = false; !last;) {
        u_int mark;
        if (!read_all(fd, reinterpret_cast<char *>(&mark), sizeof mark))
            return 0;
        last = ntohl(mark) & 0x80000000u;
        const size_t size = ntohl(mark) & 0x7fffffff;
        if (size > sizeof buffer || !read_all(fd, buffer, size))
            return 0;
        total += size;
    }
    return total;
}
