// SPDX-License-Identifier: MIT
/*
 * Answers the bench's calls with replies made beforehand, so that what is
 * measured is the client. Prints its port; ends when its standard input does.
 */
#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

/** A server of the RPC library sends fragments of about its buffer's size. */
constexpr size_t fragment_size = 65536 - 4;

/* ---- rows -------------------------------------------------------------------- */

/*
 * The fields of a row, in wire order: i an integer, q a 64-bit counter, b a
 * list of four bytes, aN a vector of N units with an address in front, tN a
 * vector of N units with a text.
 */
using fields = std::string;

fields times(int count, const fields &repeated)
{
    fields all;
    while (count-- > 0)
        all += repeated;
    return all;
}

const fields endpoint = "a16ii";
const fields h323_media = endpoint + endpoint + "i" + endpoint + endpoint;
const fields h323_call = times(2, endpoint + "t132t81") + "iiia16a16iiii" + times(4, "t257") + "iiii"
                         + times(2, h323_media) + "ii" + times(18, "i") + "iii";
const fields h323_phone = "ii" + endpoint + "t132t81" + times(7, "i") + "i" + times(5, h323_call);
const fields sccp_call = "iiia16t24t40" + times(23, "i");
const fields sccp_phone = "iiia16t24t40t40t10" + times(6, "i") + "i" + times(5, sccp_call);
const fields mgcp_media = "t33t33it32t32iiiit10iiii" + times(14, "i") + "i";
const fields mgcp_call = "iiia16a16iia16a16t33t33" + times(4, "t256") + "t24t24iii" + mgcp_media + "i";

struct table {
    uint32_t procedure;
    int count_at; // the number of rows wanted, in words from the end of the call; 0: one row without a count
    fields row;
};

const table tables[] = {
    {0, 0, "i"}, // whether the link lives
    {8, 1, "iiii" + times(11, "q") + "i"},
    {11, 2, "ibii" + times(7, "q")},
    {18, 3, "ibbiqqq"},
    {34, 1, "iib" + times(5, "q") + "iiii"},
    {37, 1, "iibbqqiiii"},
    {83, 1, sccp_phone},
    {101, 1, "ibb" + times(11, "i") + "qqiiii"},
    {103, 0, "iiii"},
    {116, 1, h323_phone},
    {185, 1, mgcp_call},
};

const table &table_of(uint32_t procedure)
{
    for (const table &each : tables)
        if (each.procedure == procedure)
            return each;
    fprintf(stderr, "reply_server: no rows for procedure %u\n", procedure);
    exit(1);
}

using words = std::vector<uint32_t>;

void add(words &out, uint32_t word)
{
    out.push_back(htonl(word));
}

/** With how many destinations a source speaks: tables of pairs are ordered by source. */
constexpr uint32_t destinations = 8;

/** Adds one row; its numbers follow from the row's. The first field is the status. */
void add_row(words &out, const fields &row, uint32_t number)
{
    static const char text[] = "reception desk";
    uint32_t value = 0;
    for (const char *field = row.c_str(); *field;) {
        const char kind = *field++;
        char *end;
        const unsigned long units = strtoul(field, &end, 10);
        field = end;
        if (kind == 'i')
            add(out, value ? 1000 * number + value : 0);
        if (kind == 'q') {
            add(out, value);
            add(out, 0x9abcdef0u + number);
        }
        if (kind == 'b')
            add(out, 4);
        const uint32_t address = kind == 'b' && *field == 'b' ? number / destinations : number + value;
        for (unsigned i = 0; i < (kind == 'b' ? 4 : units); i++)
            add(out, kind == 't' ? (i < sizeof text ? static_cast<uint8_t>(text[i]) : 0)
                     : i == 0    ? 10
                     : i < 4     ? address >> (8 * (3 - i)) & 0xff
                                 : 0);
        value++;
    }
}

/** A phone shows all its calls: their number is the field in front of them. */
void set_history(words &row, const fields &kinds, size_t start)
{
    const size_t number = kinds == h323_phone ? 240 : kinds == sccp_phone ? 139 : 0;
    if (number)
        row[start + number] = htonl(5);
}

/** The whole reply in fragments; the call's xid goes to offset 4. */
std::string make_reply(uint32_t procedure, uint32_t rows)
{
    const table &from = table_of(procedure);
    words message;
    for (uint32_t word : {0u, 1u, 0u, 0u, 0u, 0u}) // xid, REPLY, accepted, null verifier, SUCCESS
        add(message, word);
    if (from.count_at)
        add(message, rows);
    for (uint32_t number = 0; number < rows; number++) {
        const size_t start = message.size();
        add_row(message, from.row, number);
        set_history(message, from.row, start);
    }

    const auto *bytes = reinterpret_cast<const char *>(message.data());
    const size_t size = 4 * message.size();
    std::string reply;
    for (size_t sent = 0; sent < size; sent += fragment_size) {
        const size_t piece = size - sent < fragment_size ? size - sent : fragment_size;
        const bool last = sent + piece == size;
        const uint32_t mark = htonl(static_cast<uint32_t>(piece) | (last ? 0x80000000u : 0));
        reply.append(reinterpret_cast<const char *>(&mark), sizeof mark);
        reply.append(bytes + sent, piece);
    }
    return reply;
}

std::string &reply_of(uint32_t procedure, uint32_t rows)
{
    static std::map<std::pair<uint32_t, uint32_t>, std::string> replies;
    std::string &reply = replies[{procedure, rows}];
    if (reply.empty())
        reply = make_reply(procedure, rows);
    return reply;
}

/* ---- connections ---------------------------------------------------------------- */

bool read_all(int fd, void *to, size_t size)
{
    auto *bytes = static_cast<char *>(to);
    while (size) {
        const ssize_t got = read(fd, bytes, size);
        if (got <= 0)
            return false;
        bytes += got;
        size -= static_cast<size_t>(got);
    }
    return true;
}

bool write_all(int fd, const std::string &bytes)
{
    for (size_t sent = 0; sent < bytes.size();) {
        const ssize_t put = write(fd, bytes.data() + sent, bytes.size() - sent);
        if (put <= 0)
            return false;
        sent += static_cast<size_t>(put);
    }
    return true;
}

/** One call: xid, CALL, version, program, version, procedure, two null authenticators, and perhaps arguments.
 */
bool answer(int fd)
{
    uint32_t mark, call[1024];
    if (!read_all(fd, &mark, sizeof mark))
        return false;
    const size_t size = ntohl(mark) & 0x7fffffff;
    if (size < 40 || size > sizeof call || size % 4 || !read_all(fd, call, size))
        return false;
    const uint32_t procedure = ntohl(call[5]);
    const int count_at = table_of(procedure).count_at;
    std::string &reply =
        reply_of(procedure, count_at ? ntohl(call[size / 4 - static_cast<size_t>(count_at)]) : 1);
    reply.replace(4, 4, reinterpret_cast<const char *>(call), 4);
    return write_all(fd, reply);
}

} // namespace

int main()
{
    signal(SIGPIPE, SIG_IGN);
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr *>(&address), size) != 0 || listen(listener, 8) != 0
        || getsockname(listener, reinterpret_cast<sockaddr *>(&address), &size) != 0) {
        perror("reply_server");
        return 1;
    }
    printf("%d\n", ntohs(address.sin_port));
    fflush(stdout);

    std::vector<pollfd> watched{{STDIN_FILENO, POLLIN, 0}, {listener, POLLIN, 0}};
    while (poll(watched.data(), watched.size(), -1) > 0) {
        if (watched[0].revents)
            return 0;
        for (size_t i = watched.size(); i-- > 2;) {
            if (watched[i].revents && !answer(watched[i].fd)) {
                close(watched[i].fd);
                watched.erase(watched.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        if (watched[1].revents) {
            const int fd = accept(listener, nullptr, nullptr);
            const int on = 1;
            setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
            if (fd >= 0)
                watched.push_back({fd, POLLIN, 0});
        }
    }
}
