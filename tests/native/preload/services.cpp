// SPDX-License-Identifier: MIT
// Preloaded by a test: a services database that has an entry for the agent, "rmonrpc" 19000/tcp.

#include <arpa/inet.h>
#include <netdb.h>

#include <cstring>

extern "C" servent *getservbyname(const char *name, const char *protocol)
{
    static char service[] = "rmonrpc", tcp[] = "tcp";
    static char *no_aliases[] = {nullptr};
    static servent entry = {service, no_aliases, htons(19000), tcp};
    return std::strcmp(name, service) == 0 && std::strcmp(protocol, tcp) == 0 ? &entry : nullptr;
}
