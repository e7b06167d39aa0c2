// SPDX-License-Identifier: MIT
/*
 * The protocols that the agent knows (RFC 2021, protocolDirTable), and which of
 * them a frame belongs to.
 *
 * The protocols form a tree. Its roots are the base layers (ether2 and llc);
 * above them stand the network layers (ip, arp), above ip the transports and
 * what else travels in it, above the transports the applications. The identifier
 * has four octets for each layer, the parameters have one (RFC 2895); the last
 * of the four are the number by which the layer below tells what it carries: an
 * Ethernet type, a service access point, an IP protocol, a port.
 *
 * What travels in SNAP has an Ethernet type and counts as if it had come in
 * ether2, which is one protocol for both.
 *
 * Frames are told apart by one table for each layer, indexed by that number, so
 * that a frame costs three look-ups, whatever the directory holds.
 */
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

struct frame;

/** The bits of a protocol's flags. */
enum protocol_flags : int32_t {
    network_protocol = 1,
    ip_protocol_itself = 2, // ip, ip6
    leaf_protocol = 4,
    extension_protocol = 8, // made by a set
    above_ip = 16,
    auto_learned = 32,
    base_protocol = 64,
    other_protocols = 128,
};

/** What protocolDirType says. */
enum protocol_type : int32_t {
    extensible = 1, // protocols may be added above it
    address_recognition = 2,
};

/** Whether a group counts a protocol (protocolDirHostConfig and its likes). */
enum class protocol_config : int32_t {
    not_supported = 1,
    off = 2,
    on = 3,
};

/** What the next protocol is called in the header of this one. */
enum class selector : uint8_t {
    none,
    ethernet_type,
    access_point, // of LLC
    ip_protocol,
    port,
};

struct protocol {
    int32_t local_index = 0;
    int32_t parent = 0;  // local index, 0 for a base layer
    uint32_t number = 0; // what the parent calls it; the base layer's own number
    std::vector<uint8_t> id;
    std::vector<uint8_t> parameters;
    std::string description;
    std::string owner;
    protocol_config address_map = protocol_config::not_supported;
    protocol_config host = protocol_config::not_supported;
    protocol_config matrix = protocol_config::not_supported;
    protocol_config response_time = protocol_config::not_supported;
    int32_t flags = 0;     // without leaf_protocol, see flags_of()
    bool active = true;    // whether frames are counted as this one
    bool modified = false; // whether a set made or changed it
    selector told_by = selector::none;
    uint32_t children = 0;         // rows above it, active or not
    std::vector<uint16_t> carried; // local index by number; empty where told_by is none
};

/** The order of the directory: by identifier, then by parameters. */
struct protocol_key {
    std::vector<uint8_t> id;
    std::vector<uint8_t> parameters;
};

bool operator<(const protocol_key &a, const protocol_key &b);

struct protocol_directory {
    /** By local index. An index is never given twice, so a removed protocol leaves a null. */
    std::vector<std::unique_ptr<protocol>> rows;
    std::map<protocol_key, int32_t> by_id;
    /** Protocols that the agent knows by itself and a set removed: what is kept of them is that they are
     * gone. */
    std::set<protocol_key> removed;
    uint32_t last_change = 0; // sysUpTime
};

/** Fills an empty directory with the protocols that the agent knows by itself. */
void fill_protocols(protocol_directory &directory);

/** Sets the frame's base_index, and its network_index and application_index: the highest layers that are
 * known, 0 where none is. */
void classify(protocol_directory &directory, frame &what);

/** Null when there is none (any more) of this local index. */
inline protocol *find_protocol(const protocol_directory &directory, int32_t local_index)
{
    const auto at = static_cast<std::size_t>(local_index);
    return local_index > 0 && at < directory.rows.size() ? directory.rows[at].get() : nullptr;
}

/** The local index of the layer below, 0 below a base layer and for no protocol. */
inline int32_t parent_protocol(const protocol_directory &directory, int32_t local_index)
{
    const protocol *found = find_protocol(directory, local_index);
    return found ? found->parent : 0;
}

/** The protocol of an Ethernet type. Its local index, or 0. */
int32_t protocol_of_type(const protocol_directory &directory, uint16_t ethertype);

/** The first local index and the end of them; some are gone in between. */
inline constexpr int32_t first_local_index = 1;
inline int32_t local_index_end(const protocol_directory &directory)
{
    return static_cast<int32_t>(directory.rows.size());
}

/**
 * Adds a protocol above one that is there. Null when the parent cannot carry
 * this number, carries it already, or no local index is left.
 */
protocol *add_protocol(protocol_directory &directory, int32_t parent, uint32_t number);

/** Whether a protocol can carry what it calls by this number. */
bool carries(const protocol &below, uint32_t number);

/** A protocol's flags: those that stay and, while nothing stands above it, leaf_protocol. */
int32_t flags_of(const protocol &which);

/** Its protocolDirType: bits of protocol_type. */
int32_t type_of(const protocol &which);

/** Frames are counted as this protocol from now on, or no more. */
void activate_protocol(protocol_directory &directory, protocol &which, bool active);

/** Removes a protocol above which there is none. */
void remove_protocol(protocol_directory &directory, int32_t local_index);

/** Removes the protocol that was added last, as if it had never been there. */
void take_back_protocol(protocol_directory &directory);
