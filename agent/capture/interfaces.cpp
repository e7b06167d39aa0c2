// SPDX-License-Identifier: MIT
#include "agent/capture/interfaces.h"

#include "agent/capture/netlink.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <linux/ethtool.h>
#include <linux/pkt_sched.h>
#include <linux/sockios.h>
#include <linux/if.h>
#include <linux/if_arp.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

std::string text_from(const rtattr *attribute)
{
    if (!attribute)
        return {};
    const auto *text = static_cast<const char *>(RTA_DATA(attribute));
    return {text, strnlen(text, RTA_PAYLOAD(attribute))};
}

interface interface_from(const nlmsghdr *message)
{
    const auto *header = static_cast<const ifinfomsg *>(NLMSG_DATA(message));
    const auto found = attributes_from<IFLA_MAX>(IFLA_RTA(header), static_cast<int>(IFLA_PAYLOAD(message)));
    const auto info = attributes_within<IFLA_INFO_MAX>(found.at[IFLA_LINKINFO]);

    interface iface;
    iface.index = header->ifi_index;
    iface.name = text_from(found.at[IFLA_IFNAME]);
    iface.hardware_type = header->ifi_type;
    iface.flags = header->ifi_flags;
    iface.oper_state = attribute_value<uint8_t>(found.at[IFLA_OPERSTATE]);
    iface.mtu = attribute_value<int32_t>(found.at[IFLA_MTU]);
    if (const rtattr *address = found.at[IFLA_ADDRESS]) {
        const auto *bytes = static_cast<const uint8_t *>(RTA_DATA(address));
        iface.address.assign(bytes, bytes + RTA_PAYLOAD(address));
    }
    iface.kind = text_from(info.at[IFLA_INFO_KIND]);
    iface.adapter = found.at[IFLA_PARENT_DEV_NAME] != nullptr;
    if (iface.kind == "vlan") {
        const auto vlan = attributes_within<IFLA_VLAN_MAX>(info.at[IFLA_INFO_DATA]);
        iface.vlan = attribute_value<uint16_t>(vlan.at[IFLA_VLAN_ID]);
    }
    iface.counters = attribute_value<kernel_counters>(found.at[IFLA_STATS64]);
    return iface;
}

/** A message about an interface as such: bridges also announce their ports in messages of the same type. */
bool is_about_interface(const nlmsghdr *message, uint16_t type)
{
    return message->nlmsg_type == type && message->nlmsg_len >= NLMSG_LENGTH(sizeof(ifinfomsg))
           && static_cast<const ifinfomsg *>(NLMSG_DATA(message))->ifi_family == AF_UNSPEC;
}

bool same_state(const interface &a, const interface &b)
{
    return a.oper_state == b.oper_state && ((a.flags ^ b.flags) & (IFF_UP | IFF_RUNNING)) == 0;
}

/** Takes over a new description; the time of the last change stays with the row. */
interface &put(interface_table &table, interface &&iface, uint32_t up_time)
{
    const auto [found, added] = table.rows.try_emplace(iface.index);
    interface &row = found->second;
    iface.last_change = added || !same_state(iface, row) ? up_time : row.last_change;
    row = std::move(iface);
    return row;
}

struct interface_question {
    nlmsghdr header;
    ifinfomsg about;
};

interface_question question_about(int32_t index)
{
    interface_question question{};
    question.header.nlmsg_len = sizeof question;
    question.header.nlmsg_type = RTM_GETLINK;
    question.about.ifi_index = index;
    return question;
}

void put_first(void *context, const nlmsghdr *message)
{
    if (is_about_interface(message, RTM_NEWLINK))
        put(*static_cast<interface_table *>(context), interface_from(message), 0);
}

/** All interfaces that there are now. 0 or an error number. */
int fetch_all(interface_table &table)
{
    interface_question question = question_about(0);
    question.header.nlmsg_flags = NLM_F_DUMP;
    return ask_netlink(table.questions, &question.header, put_first, &table);
}

struct hearing {
    interface_table *table;
    uint32_t up_time;
    interface_news news;
};

void put_announced(void *context, const nlmsghdr *message)
{
    auto &heard = *static_cast<hearing *>(context);
    if (is_about_interface(message, RTM_NEWLINK)) {
        heard.news.changed.push_back(put(*heard.table, interface_from(message), heard.up_time).index);
    } else if (is_about_interface(message, RTM_DELLINK)) {
        const int32_t index = static_cast<const ifinfomsg *>(NLMSG_DATA(message))->ifi_index;
        heard.table->rows.erase(index);
        heard.news.gone.push_back(index);
    }
}

/** Compares the whole table with the kernel's, after announcements were lost. */
void catch_up(hearing &heard)
{
    std::map<int32_t, interface> before = std::move(heard.table->rows);
    heard.table->rows.clear();
    if (fetch_all(*heard.table) != 0) {
        heard.table->rows = std::move(before);
        return;
    }
    for (auto &[index, row] : heard.table->rows) {
        const auto old = before.find(index);
        const bool same = old != before.end() && same_state(old->second, row);
        row.last_change = same ? old->second.last_change : heard.up_time;
        heard.news.changed.push_back(index);
        if (old != before.end())
            before.erase(old);
    }
    for (const auto &[index, row] : before)
        heard.news.gone.push_back(index);
}

void take_fetched(void *context, const nlmsghdr *message)
{
    if (is_about_interface(message, RTM_NEWLINK))
        *static_cast<interface *>(context) = interface_from(message);
}

struct queue_search {
    int32_t index;
    uint32_t length;
};

void take_queue(void *context, const nlmsghdr *message)
{
    auto &search = *static_cast<queue_search *>(context);
    if (message->nlmsg_type != RTM_NEWQDISC || message->nlmsg_len < NLMSG_LENGTH(sizeof(tcmsg)))
        return;
    const auto *header = static_cast<const tcmsg *>(NLMSG_DATA(message));
    if (header->tcm_ifindex != search.index || header->tcm_parent != TC_H_ROOT)
        return;
    const auto found = attributes_from<TCA_MAX>(TCA_RTA(header), static_cast<int>(TCA_PAYLOAD(message)));
    search.length = attribute_value<tc_stats>(found.at[TCA_STATS]).qlen;
}

} // namespace

bool open_interfaces(interface_table &table)
{
    // Announcements first: what changes while the table is fetched is not missed.
    table.announcements = open_netlink(RTMGRP_LINK);
    table.questions = open_netlink(0);
    if (table.announcements < 0 || table.questions < 0)
        return false;
    errno = fetch_all(table);
    return errno == 0;
}

void close_interfaces(interface_table &table)
{
    for (int *socket : {&table.questions, &table.announcements}) {
        if (*socket >= 0)
            close(*socket);
        *socket = -1;
    }
    table.rows.clear();
}

interface_news hear_interfaces(interface_table &table, uint32_t up_time)
{
    hearing heard{&table, up_time, {}};
    if (hear_netlink(table.announcements, put_announced, &heard) != 0)
        catch_up(heard);
    return heard.news;
}

interface *fetch_interface(interface_table &table, int32_t index)
{
    const auto found = table.rows.find(index);
    if (found == table.rows.end())
        return nullptr;
    if (found->second.file)
        return &found->second;
    interface_question question = question_about(index);
    interface fresh;
    const int error = ask_netlink(table.questions, &question.header, take_fetched, &fresh);
    if (error == ENODEV)
        return nullptr;
    // The rest of the description comes with the announcements, which also tell when it changed.
    if (error == 0 && fresh.index == index)
        found->second.counters = fresh.counters;
    return &found->second;
}

bool is_ethernet_like(const interface &iface)
{
    return iface.hardware_type == ARPHRD_ETHER || iface.hardware_type == ARPHRD_LOOPBACK;
}

bool is_measured(const interface_table &table, const interface &iface)
{
    return is_ethernet_like(iface)
           && (table.measured.empty()
               || std::ranges::find(table.measured, iface.name) != table.measured.end());
}

uint32_t speed_of(const interface &iface)
{
    const auto shown = [](uint64_t bits) {
        return static_cast<uint32_t>(std::min<uint64_t>(bits, UINT32_MAX));
    };
    if (iface.file)
        return shown(iface.file_speed);
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return 0;
    ethtool_cmd command{};
    command.cmd = ETHTOOL_GSET;
    ifreq request{};
    iface.name.copy(request.ifr_name, IFNAMSIZ - 1);
    request.ifr_data = reinterpret_cast<char *>(&command);
    const bool known = ioctl(socket, SIOCETHTOOL, &request) == 0;
    close(socket);

    const uint32_t megabits = ethtool_cmd_speed(&command);
    if (!known || megabits == UINT32_MAX || megabits == UINT16_MAX)
        return 0;
    return shown(uint64_t{megabits} * 1000000);
}

uint32_t queue_length_of(const interface_table &table, const interface &iface)
{
    if (iface.file)
        return 0;
    struct {
        nlmsghdr header;
        tcmsg queue;
    } question{};
    question.header.nlmsg_len = sizeof question;
    question.header.nlmsg_type = RTM_GETQDISC;
    question.header.nlmsg_flags = NLM_F_DUMP;
    question.queue.tcm_ifindex = iface.index;
    queue_search search{iface.index, 0};
    ask_netlink(table.questions, &question.header, take_queue, &search);
    return search.length;
}
