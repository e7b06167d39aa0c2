// SPDX-License-Identifier: MIT
#include "agent/admin/administration.h"

#include "agent/capture/family.h"
#include "agent/core/reply.h"
#include "agent/core/variables.h"

#include <cctype>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <unistd.h>

namespace {

/** Resolvers in the list; systems use three. */
constexpr std::size_t max_resolvers = 32;

/** Interfaces with addresses that were set. */
constexpr std::size_t max_addresses = 1000;

/* ---- what the machine has ---------------------------------------------------------- */

struct route {
    uint32_t interface_index;
    uint32_t gateway; // network order
};

/** The default route with the lowest metric; of zeros when there is none. */
route default_route()
{
    route best{};
    unsigned long best_metric = ULONG_MAX;
    std::FILE *file = std::fopen("/proc/net/route", "re");
    if (!file)
        return best;
    char line[512];
    while (std::fgets(line, sizeof line, file)) {
        char name[IF_NAMESIZE];
        unsigned destination, gateway, flags, mask;
        unsigned long metric;
        const int found = std::sscanf(
            line, "%15s %x %x %x %*d %*d %lu %x", name, &destination, &gateway, &flags, &metric, &mask);
        if (found == 6 && destination == 0 && mask == 0 && metric < best_metric) {
            best_metric = metric;
            best = {if_nametoindex(name), gateway};
        }
    }
    std::fclose(file);
    return best;
}

uint32_t word_of(const sockaddr *address)
{
    if (!address || address->sa_family != AF_INET)
        return 0;
    return reinterpret_cast<const sockaddr_in *>(address)->sin_addr.s_addr;
}

/** The interface's first address of IPv4, with what belongs to it; zeros where there is none. */
rmonrpc_ipconfig_t machine_addresses(uint32_t interface_index, uint32_t gateway)
{
    rmonrpc_ipconfig_t found{};
    found.ipInterface = interface_index;
    found.ipGateway = gateway;
    ifaddrs *list = nullptr;
    if (getifaddrs(&list) != 0)
        return found;
    for (const ifaddrs *one = list; one; one = one->ifa_next) {
        if (word_of(one->ifa_addr) == 0 || if_nametoindex(one->ifa_name) != interface_index)
            continue;
        found.ipAddress = word_of(one->ifa_addr);
        found.ipNetmask = word_of(one->ifa_netmask);
        if (one->ifa_flags & IFF_BROADCAST)
            found.ipBroadcast = word_of(one->ifa_broadaddr);
        break;
    }
    freeifaddrs(list);
    return found;
}

std::vector<std::string> machine_resolvers()
{
    std::vector<std::string> found;
    std::FILE *file = std::fopen("/etc/resolv.conf", "re");
    if (!file)
        return found;
    char line[512];
    char address[256];
    while (found.size() < max_resolvers && std::fgets(line, sizeof line, file))
        if (std::sscanf(line, " nameserver %255s", address) == 1)
            found.emplace_back(address);
    std::fclose(file);
    return found;
}

std::string machine_name()
{
    char name[HOST_NAME_MAX + 1] = {};
    return gethostname(name, sizeof name - 1) == 0 ? name : "";
}

/* ---- what makes sense -------------------------------------------------------------------- */

/** Ones, then zeros. */
bool is_netmask(uint32_t word)
{
    const uint32_t rest = ~ntohl(word);
    return (rest & (rest + 1)) == 0;
}

/** An address that a host may have. */
bool is_host_address(uint32_t word)
{
    const uint32_t address = ntohl(word);
    return address != 0 && !IN_MULTICAST(address) && !IN_BADCLASS(address);
}

/** Labels of letters, digits and hyphens, as RFC 1123 has them. */
bool is_host_name(std::string_view name)
{
    if (name.empty() || name.size() > 253)
        return false;
    std::size_t label = 0; // characters of it so far
    char before = '.';
    for (const char c : name) {
        if (c == '.') {
            if (label == 0 || before == '-')
                return false;
            label = 0;
        } else {
            if (!std::isalnum(static_cast<unsigned char>(c)) && !(c == '-' && label > 0))
                return false;
            if (++label > 63)
                return false;
        }
        before = c;
    }
    return label > 0 && before != '-';
}

bool is_address(const char *text)
{
    in6_addr address;
    return text && (inet_pton(AF_INET, text, &address) == 1 || inet_pton(AF_INET6, text, &address) == 1);
}

} // namespace

/* ---- addresses ------------------------------------------------------------------------------- */

rmonrpc_ipconfig_t sys_ipconf_get(probe &agent, const int32_t &interface_index)
{
    const auto &set = storage<administration>(agent).addresses;
    const auto wanted = static_cast<uint32_t>(interface_index);
    if (const auto found = set.find(wanted); found != set.end())
        return found->second;

    const route way = default_route();
    if (wanted == 0) {
        rmonrpc_ipconfig_t main = machine_addresses(way.interface_index, way.gateway);
        main.ipInterface = 0;
        return main;
    }
    if (agent.interfaces.rows.contains(interface_index))
        return machine_addresses(wanted, wanted == way.interface_index ? way.gateway : 0);
    return no_such_row<rmonrpc_ipconfig_t>();
}

int32_t sys_ipconf_set(probe &agent, const rmonrpc_ipconfig_t &request)
{
    if (request.ipInterface != 0
        && !agent.interfaces.rows.contains(static_cast<int32_t>(request.ipInterface)))
        return no_such_name;
    if (!is_host_address(request.ipAddress) || !is_netmask(request.ipNetmask)
        || (request.ipGateway != 0 && !is_host_address(request.ipGateway)))
        return bad_value;
    auto &set = storage<administration>(agent).addresses;
    if (set.size() >= max_addresses && !set.contains(request.ipInterface))
        return gen_err;
    load_addresses(agent, request);
    return no_error;
}

void save_addresses(probe &agent, state_writer &writer)
{
    for (const auto &[index, set] : storage<administration>(agent).addresses)
        write_record(writer, set);
}

void load_addresses(probe &agent, const rmonrpc_ipconfig_t &kept)
{
    rmonrpc_ipconfig_t &set = storage<administration>(agent).addresses[kept.ipInterface];
    set = kept;
    set.status = no_error;
    note_row(agent, set);
}

std::string addresses_key(const rmonrpc_ipconfig_t &kept)
{
    return key_of_numbers(kept.ipInterface);
}

/* ---- host name ---------------------------------------------------------------------------------- */

rmonrpc_sys_hostname_t sys_hostname_get(probe &agent)
{
    rmonrpc_sys_hostname_t reply{};
    set_text(
        reply.hostname, storage<administration>(agent).host_name ? *storage<administration>(agent).host_name
                                                                 : machine_name());
    return reply;
}

int32_t sys_hostname_set(probe &agent, const rmonrpc_sys_hostname_t &request)
{
    if (!is_host_name(text_of(request.hostname)))
        return bad_value;
    load_host_name(agent, request);
    return no_error;
}

void save_host_name(probe &agent, state_writer &writer)
{
    if (!storage<administration>(agent).host_name)
        return;
    rmonrpc_sys_hostname_t kept{};
    kept.hostname.value = storage<administration>(agent).host_name->c_str();
    write_record(writer, kept);
}

void load_host_name(probe &agent, const rmonrpc_sys_hostname_t &kept)
{
    storage<administration>(agent).host_name = text_of(kept.hostname);
}

/* ---- resolvers ----------------------------------------------------------------------------------- */

rmonrpc_sys_resolvers_t sys_resolvers_get(probe &agent)
{
    const std::vector<std::string> names = storage<administration>(agent).resolvers
                                               ? *storage<administration>(agent).resolvers
                                               : machine_resolvers();
    rmonrpc_sys_resolvers_t reply{};
    if (names.empty())
        return reply;
    reply.resolvers.value = static_cast<rmonrpc_sys_resolver_name *>(
        std::calloc(names.size(), sizeof(rmonrpc_sys_resolver_name)));
    if (!reply.resolvers.value) {
        reply.status = gen_err;
        return reply;
    }
    for (const std::string &name : names)
        set_text(reply.resolvers.value[reply.resolvers.length++], name);
    return reply;
}

int32_t sys_resolvers_set(probe &agent, const rmonrpc_sys_resolvers_t &request)
{
    const auto &list = request.resolvers;
    if (list.length > max_resolvers)
        return bad_value;
    for (uint32_t i = 0; i < list.length; i++)
        if (!is_address(list.value[i].value))
            return bad_value;
    load_resolvers(agent, request);
    return no_error;
}

void save_resolvers(probe &agent, state_writer &writer)
{
    if (!storage<administration>(agent).resolvers)
        return;
    std::vector<rmonrpc_sys_resolver_name> names;
    for (const std::string &name : *storage<administration>(agent).resolvers)
        names.push_back({name.c_str()});
    rmonrpc_sys_resolvers_t kept{};
    kept.resolvers = {static_cast<uint32_t>(names.size()), names.data()};
    write_record(writer, kept);
}

void load_resolvers(probe &agent, const rmonrpc_sys_resolvers_t &kept)
{
    auto &names = storage<administration>(agent).resolvers.emplace();
    for (uint32_t i = 0; i < kept.resolvers.length; i++)
        names.emplace_back(text_of(kept.resolvers.value[i]));
}

/* ---- variables ------------------------------------------------------------------------------------- */

rmonrpc_mibvar_t mibvar_get(probe &agent, const rmonrpc_mibvar_name &name)
{
    const auto reading = read_variable(agent, text_of(name));
    return reading ? rmonrpc_mibvar_t{no_error, reading->value} : rmonrpc_mibvar_t{no_such_name, 0};
}

/* ---- the rest of an appliance ---------------------------------------------------------------------- */

int32_t data_port_config(probe &, const rmonrpc_row_key2_t &)
{
    return no_such_name;
}

int32_t rmon_data_sync_completed(probe &agent)
{
    return agent.state.failed ? gen_err : no_error;
}

int32_t tambo_send_ip_change(probe &)
{
    return gen_err;
}

int32_t tambo_send_time_poll(probe &)
{
    return gen_err;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr served_procedure procedures[] = {
    serve<mibvar_get>(mibvar_get_1),
    serve<sys_ipconf_get>(sys_ipconf_get_1),
    serve_set<sys_ipconf_set>(sys_ipconf_set_1),
    serve<sys_hostname_get>(sys_hostname_get_1),
    serve_set<sys_hostname_set>(sys_hostname_set_1),
    serve<sys_resolvers_get>(sys_resolvers_get_1),
    serve_set<sys_resolvers_set>(sys_resolvers_set_1),
    serve_set<data_port_config>(data_port_config_1),
    serve<rmon_data_sync_completed>(rmon_data_sync_completed_1),
    serve<tambo_send_ip_change>(tambo_send_ip_change_1),
    serve<tambo_send_time_poll>(tambo_send_time_poll_1),
};

constexpr state_part kept[] = {
    keep_each<save_addresses, load_addresses, addresses_key>("addresses"),
    keep<save_host_name, load_host_name>("hostName"),
    keep<save_resolvers, load_resolvers>("resolvers"),
};

} // namespace

extern const family administration_family = {
    .name = "administration",
    .procedures = procedures,
    .kept = kept,
};
