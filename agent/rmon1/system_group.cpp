// SPDX-License-Identifier: MIT
#include "agent/rmon1/system_group.h"

#include "agent/capture/family.h"
#include "agent/core/reply.h"

#include <climits>
#include <cstdio>

#include <sys/utsname.h>
#include <unistd.h>

namespace {

std::string describe_host()
{
    utsname host{};
    if (uname(&host) != 0)
        return {};
    return std::string(host.sysname) + " " + host.release + " " + host.version + " " + host.machine;
}

std::string host_name()
{
    char name[HOST_NAME_MAX + 1] = {};
    return gethostname(name, sizeof name - 1) == 0 ? name : "";
}

/** True when the kernel's switch of this name is on. */
bool kernel_switch(const char *path)
{
    std::FILE *file = std::fopen(path, "re");
    if (!file)
        return false;
    const int value = std::fgetc(file);
    std::fclose(file);
    return value != EOF && value != '0';
}

/** The layers at which this machine works: the sum of 2 to the (layer - 1). */
int32_t services(const probe &agent)
{
    constexpr int32_t bridges = 1 << 1, routes = 1 << 2, end_to_end = 1 << 3, applications = 1 << 6;
    int32_t sum = end_to_end | applications;
    for (const auto &[index, iface] : agent.interfaces.rows)
        if (iface.kind == "bridge")
            sum |= bridges;
    if (kernel_switch("/proc/sys/net/ipv4/ip_forward")
        || kernel_switch("/proc/sys/net/ipv6/conf/all/forwarding"))
        sum |= routes;
    return sum;
}

} // namespace

rmonrpc_system_t system_get(probe &agent)
{
    const system_texts &texts = storage<system_texts>(agent);
    rmonrpc_system_t reply{};
    set_text(reply.sysDescr, describe_host());
    reply.sysUpTime = up_time(agent);
    set_text(reply.sysContact, texts.contact);
    set_text(reply.sysName, texts.name ? *texts.name : host_name());
    set_text(reply.sysLocation, texts.location);
    // No registered product: the value that RFC 2578 has for "none" (zeroDotZero).
    set_text(reply.sysObjectID, "0.0");
    reply.sysServices = services(agent);
    return reply;
}

int32_t system_set(probe &agent, const rmonrpc_system_t &request)
{
    const std::string_view contact = text_of(request.sysContact);
    const std::string_view name = text_of(request.sysName);
    const std::string_view location = text_of(request.sysLocation);
    if (!is_printable(contact) || !is_printable(name) || !is_printable(location))
        return bad_value;
    storage<system_texts>(agent) = {std::string(contact), std::string(name), std::string(location)};
    return no_error;
}

void save_system_texts(probe &agent, state_writer &writer)
{
    const system_texts &texts = storage<system_texts>(agent);
    if (!texts.name)
        return; // nothing was set
    rmonrpc_system_t kept{};
    kept.sysContact.value = texts.contact.c_str();
    kept.sysName.value = texts.name->c_str();
    kept.sysLocation.value = texts.location.c_str();
    write_record(writer, kept);
}

int32_t load_system_texts(probe &agent, const rmonrpc_system_t &kept)
{
    return system_set(agent, kept);
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

/** Does nothing, and so tells that the agent is there. */
int32_t test(probe &)
{
    return 0;
}

constexpr served_procedure procedures[] = {
    serve<test>(rmonrpc_test_1),
    serve<system_get>(system_get_1),
    serve_set<system_set>(system_set_1),
};

constexpr state_part kept[] = {
    keep<save_system_texts, load_system_texts>("system"),
};

// clang-format off
constexpr known_variable variables[] = {
    scalar<system_get, &rmonrpc_system_t::sysUpTime, false>("1.3.6.1.2.1.1.3"),
    scalar<system_get, &rmonrpc_system_t::sysServices, false>("1.3.6.1.2.1.1.7"),
};
// clang-format on

} // namespace

extern const family system_group_family = {
    .name = "system_group",
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
