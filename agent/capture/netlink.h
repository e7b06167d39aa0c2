// SPDX-License-Identifier: MIT
/* Questions to the kernel about its interfaces, over a routing netlink socket. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <linux/rtnetlink.h>

/** Called with each message of an answer. */
using on_netlink = void (*)(void *context, const nlmsghdr *message);

/** A socket, or -1 with errno. It also hears the groups (RTMGRP_*) in the bit mask; 0 for questions only. */
int open_netlink(uint32_t groups);

/**
 * Asks and hands over the answer, message by message. 0, or the error number
 * by which the kernel refused: ENODEV when there is no such interface.
 */
int ask_netlink(int socket, nlmsghdr *question, on_netlink message, void *context);

/**
 * Hands over what arrived on a socket that hears groups, without waiting.
 * ENOBUFS when the kernel lost messages because they were not fetched in time.
 */
int hear_netlink(int socket, on_netlink message, void *context);

/** A message's attributes by their number; null where there is none of that number. */
template <unsigned Last> struct netlink_attributes {
    const rtattr *at[Last + 1] = {};
};

template <unsigned Last> netlink_attributes<Last> attributes_from(const rtattr *first, int size)
{
    netlink_attributes<Last> found;
    for (auto *next = const_cast<rtattr *>(first); RTA_OK(next, size); next = RTA_NEXT(next, size)) {
        const unsigned number = next->rta_type & NLA_TYPE_MASK;
        if (number <= Last)
            found.at[number] = next;
    }
    return found;
}

/** The attributes within an attribute; none when it is not there. */
template <unsigned Last> netlink_attributes<Last> attributes_within(const rtattr *outer)
{
    if (!outer)
        return {};
    return attributes_from<Last>(
        static_cast<const rtattr *>(RTA_DATA(outer)), static_cast<int>(RTA_PAYLOAD(outer)));
}

/** The value of an attribute that holds one number or structure; zeroed as far as it is not there. */
template <class Value> Value attribute_value(const rtattr *attribute)
{
    Value value{};
    if (attribute) {
        // Structures grow with the kernel: older ones are shorter. They may lie unaligned.
        const std::size_t size = RTA_PAYLOAD(attribute);
        std::memcpy(&value, RTA_DATA(attribute), size < sizeof value ? size : sizeof value);
    }
    return value;
}
