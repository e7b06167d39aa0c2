// SPDX-License-Identifier: MIT
#include "agent/capture/protocol_list.h"

namespace {

constexpr known_protocol networks[] = {
    {"ip", 0x0800},         {"arp", 0x0806},         {"wake-on-lan", 0x0842}, {"trill", 0x22f3},
    {"rarp", 0x8035},       {"atalk", 0x809b},       {"aarp", 0x80f3},        {"ipx", 0x8137},
    {"ip6", 0x86dd},        {"mac-control", 0x8808}, {"slow", 0x8809},        {"mpls", 0x8847},
    {"mpls-mcast", 0x8848}, {"pppoe-d", 0x8863},     {"pppoe-s", 0x8864},     {"eapol", 0x888e},
    {"profinet", 0x8892},   {"aoe", 0x88a2},         {"ethercat", 0x88a4},    {"lldp", 0x88cc},
    {"macsec", 0x88e5},     {"ptp", 0x88f7},         {"fcoe", 0x8906},        {"roce", 0x8915},
    {"loopback", 0x9000},
};

constexpr known_protocol over_llc[] = {{"bpdu", 0x42}, {"ipx", 0xe0}, {"netbeui", 0xf0}, {"clns", 0xfe}};

constexpr known_protocol over_ip[] = {
    {"icmp", 1},
    {"igmp", 2},
    {"ipip4", 4},
    {"tcp", 6, over_tcp},
    {"egp", 8},
    {"igp", 9},
    {"udp", 17, over_udp},
    {"dccp", 33},
    {"ipip6", 41},
    {"rsvp", 46},
    {"gre", 47},
    {"esp", 50},
    {"ah", 51},
    {"eigrp", 88},
    {"ospf", 89},
    {"pim", 103},
    {"vrrp", 112},
    {"l2tp", 115},
    {"sctp", 132, over_sctp},
    {"udplite", 136},
};

constexpr known_protocol over_ip6[] = {
    {"ipip4", 4},          {"tcp", 6, over_tcp},
    {"udp", 17, over_udp}, {"dccp", 33},
    {"ipip6", 41},         {"rsvp", 46},
    {"gre", 47},           {"esp", 50},
    {"icmp6", 58},         {"ospf", 89},
    {"pim", 103},          {"vrrp", 112},
    {"l2tp", 115},         {"sctp", 132, over_sctp},
    {"udplite", 136},
};

constexpr uint8_t over_both = over_tcp | over_udp;

constexpr known_application applications[] = {
    {"echo", 7, over_both},
    {"discard", 9, over_both},
    {"daytime", 13, over_both},
    {"chargen", 19, over_both},
    {"ftp-data", 20, over_tcp},
    {"ftp", 21, over_tcp},
    {"ssh", 22, over_tcp},
    {"telnet", 23, over_tcp},
    {"smtp", 25, over_tcp},
    {"time", 37, over_both},
    {"nicname", 43, over_tcp},
    {"tacacs", 49, over_both},
    {"domain", 53, over_both},
    {"bootps", 67, over_udp},
    {"bootpc", 68, over_udp},
    {"tftp", 69, over_udp},
    {"gopher", 70, over_tcp},
    {"finger", 79, over_tcp},
    {"www-http", 80, over_tcp},
    {"kerberos", 88, over_both},
    {"pop3", 110, over_tcp},
    {"sunrpc", 111, over_both},
    {"auth", 113, over_tcp},
    {"nntp", 119, over_tcp},
    {"ntp", 123, over_udp},
    {"msrpc", 135, over_both},
    {"nbt-name", 137, over_both},
    {"nbt-data", 138, over_udp},
    {"nbt-session", 139, over_tcp},
    {"imap", 143, over_tcp},
    {"snmp", 161, over_both},
    {"snmptrap", 162, over_both},
    {"xdmcp", 177, over_udp},
    {"bgp", 179, over_tcp},
    {"irc", 194, over_tcp},
    {"ldap", 389, over_both},
    {"slp", 427, over_both},
    {"https", 443, over_both},
    {"smb", 445, over_tcp},
    {"isakmp", 500, over_udp},
    {"rexec", 512, over_tcp},
    {"rlogin", 513, over_tcp},
    {"rshell", 514, over_tcp},
    {"syslog", 514, over_udp},
    {"printer", 515, over_tcp},
    {"rip", 520, over_udp},
    {"ripng", 521, over_udp},
    {"uucp", 540, over_tcp},
    {"dhcp6-client", 546, over_udp},
    {"dhcp6-server", 547, over_udp},
    {"rtsp", 554, over_both},
    {"smtps", 465, over_tcp},
    {"submission", 587, over_tcp},
    {"ipp", 631, over_both},
    {"ldp", 646, over_both},
    {"ldaps", 636, over_tcp},
    {"rsync", 873, over_tcp},
    {"ftps", 990, over_tcp},
    {"imaps", 993, over_tcp},
    {"pop3s", 995, over_tcp},
    {"socks", 1080, over_tcp},
    {"ms-sql", 1433, over_tcp},
    {"oracle-tns", 1521, over_tcp},
    {"radius", 1812, over_udp},
    {"radius-acct", 1813, over_udp},
    {"h323-gatestat", 1719, over_udp},
    {"h323", 1720, over_tcp},
    {"pptp", 1723, over_tcp},
    {"mqtt", 1883, over_tcp},
    {"ssdp", 1900, over_udp},
    {"sccp", 2000, over_tcp},
    {"nfs", 2049, over_both},
    {"netflow", 2055, over_udp},
    {"mgcp-gateway", 2427, over_udp},
    {"mgcp-callagent", 2727, over_udp},
    {"diameter", 3868, over_tcp | over_sctp},
    {"iscsi", 3260, over_tcp},
    {"mysql", 3306, over_tcp},
    {"ms-rdp", 3389, over_both},
    {"stun", 3478, over_both},
    {"ipsec-nat", 4500, over_udp},
    {"vxlan", 4789, over_udp},
    {"sip", 5060, over_both | over_sctp},
    {"sips", 5061, over_tcp},
    {"xmpp-client", 5222, over_tcp},
    {"xmpp-server", 5269, over_tcp},
    {"mdns", 5353, over_udp},
    {"llmnr", 5355, over_udp},
    {"postgresql", 5432, over_tcp},
    {"amqp", 5672, over_tcp},
    {"vnc", 5900, over_tcp},
    {"x11", 6000, over_tcp},
    {"sflow", 6343, over_udp},
    {"redis", 6379, over_tcp},
    {"www-http-alt", 8080, over_tcp},
    {"rmon-agent", 9911, over_tcp},
};

} // namespace

const std::span<const known_protocol> known_networks = networks;
const std::span<const known_protocol> known_over_llc = over_llc;
const std::span<const known_protocol> known_over_ip = over_ip;
const std::span<const known_protocol> known_over_ip6 = over_ip6;
const std::span<const known_application> known_applications = applications;

bool is_measured(uint32_t ip_protocol, uint32_t port)
{
    constexpr uint32_t tcp = 6, udp = 17, domain = 53;
    return ip_protocol == tcp || (ip_protocol == udp && port == domain);
}
