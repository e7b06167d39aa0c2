/*
 * Answers the bench's calls with replies made beforehand, so that what is
 * measured is the client: network-layer hosts (narrow rows) and H.323 phones
 * (wide rows), as many rows as the last word of the call asks for. Prints its
 * port; ends when its standard input does.
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
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr uint32_t hlhost_get = 34;
constexpr uint32_t h323_phone_rec_get = 116;
/** A server of the RPC library sends fragments of about its buffer's size. */
constexpr size_t fragment_size = 65536 - 4;

using words = std::vector<uint32_t>;

void add(words &out, uint32_t word)
{
    out.push_back(htonl(word));
}

void add_counter(words &out, uint64_t value)
{
    add(out, static_cast<uint32_t>(value >> 32));
    add(out, static_cast<uint32_t>(value));
}

/** A vector of size units that holds a text. */
void add_text(words &out, const char *text, size_t size)
{
    const size_t length = strlen(text);
    for (size_t i = 0; i < size; i++)
        add(out, i < length ? static_cast<uint8_t>(text[i]) : 0);
}

void add_integers(words &out, uint32_t first, int count)
{
    for (int i = 0; i < count; i++)
        add(out, first + static_cast<uint32_t>(i));
}

/** A 16-unit vector with an IPv4 address in front. */
void add_address(words &out, uint32_t host)
{
    for (uint32_t i = 0; i < 16; i++)
        add(out, i == 0 ? 10 : i < 4 ? (host >> (8 * (3 - i))) & 0xff : 0);
}

void add_endpoint(words &out, uint32_t host)
{
    add_address(out, host);
    add_integers(out, 4, 1);
    add_integers(out, 30000 + host % 1000, 1);
}

void add_host(words &out, uint32_t row)
{
    add_integers(out, 0, 1);
    add_integers(out, 100000 + row, 1);
    add(out, 4);
    for (uint32_t byte : {10u, row >> 16 & 0xff, row >> 8 & 0xff, row & 0xff})
        add(out, byte);
    for (uint64_t i = 0; i < 5; i++)
        add_counter(out, 0x123456789ULL * (row + 1) + (i << 40));
    add_integers(out, 5000, 4);
}

void add_call(words &out, uint32_t row)
{
    add_endpoint(out, row);
    add_text(out, "4155550123", 132);
    add_text(out, "reception desk", 81);
    add_endpoint(out, row + 1);
    add_text(out, "4155550199", 132);
    add_text(out, "meeting room 7", 81);
    add_integers(out, 1, 3);
    for (int id = 0; id < 2; id++)
        add_integers(out, 0x10, 16);
    add_integers(out, 7, 4);
    for (const char *text : {"Video terminal", "Release 4.2.1", "Voice gateway", "Release 11"})
        add_text(out, text, 257);
    add_integers(out, 20, 4);
    for (uint32_t direction = 0; direction < 2; direction++) {
        add_endpoint(out, row + 2);
        add_endpoint(out, row + 3);
        add_integers(out, 8, 1);
        add_endpoint(out, row + 4);
        add_endpoint(out, row + 5);
    }
    add_integers(out, 900000, 2);
    add_integers(out, 0x80000001, 9);
    add_integers(out, 0x90000001, 9);
    add_integers(out, 1, 1);
    add_integers(out, 10, 2);
}

void add_phone(words &out, uint32_t row)
{
    add_integers(out, 1, 1);
    add_integers(out, row + 1, 1);
    add_endpoint(out, row);
    add_text(out, "4155550123", 132);
    add_text(out, "reception desk", 81);
    add_integers(out, 3, 7);
    add_integers(out, 5, 1);
    for (uint32_t call = 0; call < 5; call++)
        add_call(out, row + call);
}

/** The whole reply in fragments; the call's xid goes to offset 4. */
std::string make_reply(uint32_t procedure, uint32_t rows)
{
    words message;
    for (uint32_t word : {0u, 1u, 0u, 0u, 0u, 0u}) // xid, REPLY, accepted, null verifier, SUCCESS
        add(message, word);
    add(message, rows);
    for (uint32_t row = 0; row < rows; row++)
        (procedure == hlhost_get ? add_host : add_phone)(message, row);

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

/** One call: xid, CALL, version, program, version, procedure, two null authenticators, arguments. */
bool answer(int fd)
{
    uint32_t mark;
    char call[4096];
    if (!read_all(fd, &mark, sizeof mark))
        return false;
    const size_t size = ntohl(mark) & 0x7fffffff;
    if (size < 44 || size > sizeof call || !read_all(fd, call, size))
        return false;
    uint32_t procedure, rows;
    memcpy(&procedure, call + 20, sizeof procedure);
    memcpy(&rows, call + size - 4, sizeof rows);
    std::string &reply = reply_of(ntohl(procedure), ntohl(rows));
    reply.replace(4, 4, call, 4);
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
