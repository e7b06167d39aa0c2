#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""A small agent: the system group, the interface table and Ethernet statistics of this machine (Linux).

usage: agent.py [PORT]          0 takes any free one
"""

import os
import socketserver
import struct
import sys
import time

PROGRAM, VERSION = 99999, 1
SUCCESS, PROG_UNAVAIL, PROG_MISMATCH, PROC_UNAVAIL, GARBAGE_ARGS = range(5)
GET = 1  # the other one is getnext
VALID, CREATE_REQUEST, UNDER_CREATION, INVALID = 1, 2, 3, 4
NO_ERROR, NO_SUCH_NAME, BAD_VALUE = 0, 2, 3
LONGEST_CALL = 65536
BEGUN = time.monotonic()


class Reader:
    """Takes a call apart, field by field; struct.error where it ends early or a text is too long."""

    def __init__(self, octets):
        self.octets, self.at = octets, 0

    def take(self, fields):
        values = struct.unpack_from(">" + fields, self.octets, self.at)
        self.at += struct.calcsize(">" + fields)
        return values

    def text(self, bound=255):
        (length,) = self.take("I")
        if length > bound:
            raise struct.error("too long")
        return self.take(f"{length}s{-length % 4}x")[0]


def ints(*values):
    return struct.pack(f">{len(values)}I", *(value & 0xFFFFFFFF for value in values))


def hypers(*values):
    return struct.pack(f">{len(values)}Q", *values)


def text(value):
    octets = (value if isinstance(value, bytes) else value.encode())[:255]
    return ints(len(octets)) + octets + bytes(-len(octets) % 4)


def byte_list(octets):
    """One unit for each octet: never packed."""
    return ints(len(octets), *octets)


def uptime():
    return int((time.monotonic() - BEGUN) * 100)


def of_interface(name, file, otherwise="0"):
    try:
        with open(f"/sys/class/net/{name}/{file}", encoding="ascii") as value:
            return value.read().strip() or otherwise
    except OSError:
        return otherwise


def counters(name, *which):
    return [int(of_interface(name, f"statistics/{counter}")) for counter in which]


def interfaces():
    """Names by ifIndex, in their order."""
    names = {int(of_interface(name, "ifindex")): name for name in os.listdir("/sys/class/net")}
    return {index: names[index] for index in sorted(names) if index > 0}


def find(known, index, get_type):
    """The index of the row that a key means, or None."""
    if get_type == GET:
        return index if index in known else None
    return min((other for other in known if other > index), default=None)


def get_system(_):
    version = " ".join(os.uname())
    return text(version) + ints(uptime()) + text("") + text(os.uname().nodename) + text("") + text("0.0") + ints(72)


def get_interface(argument):
    index = find(interfaces(), *argument.take("ii"))
    if index is None:
        return ints(NO_SUCH_NAME, 0) + text("") + ints(0, 0, 0) + byte_list(b"") + ints(*[0] * 22)
    name = interfaces()[index]
    octets = bytes.fromhex(of_interface(name, "address", "").replace(":", ""))
    up = 1 if of_interface(name, "operstate") in ("up", "unknown") else 2
    speed = max(0, int(of_interface(name, "speed"))) * 1_000_000
    received = counters(name, "rx_bytes", "rx_packets", "rx_multicast", "rx_dropped", "rx_errors")
    sent = [*counters(name, "tx_bytes", "tx_packets"), 0, *counters(name, "tx_dropped", "tx_errors"), 0]
    head = ints(NO_ERROR, index) + text(name) + ints(6, int(of_interface(name, "mtu")), min(speed, 0xFFFFFFFF))
    # At the end, what a switch would tell of its port.
    return head + byte_list(octets) + ints(1, up, 0, *received, 0, *sent, *[0] * 7)


# Rows of the Ethernet statistics: interface, owner, status, create time.
rows = {index: [index, b"monitor", VALID, 0] for index in interfaces()}


def get_statistics(argument):
    index = find(rows, *argument.take("ii"))
    if index is None:
        return ints(NO_SUCH_NAME, 0, 0) + hypers(*[0] * 17) + text("") + ints(0) + hypers(0) + ints(0)
    source, owner, status, created = rows[index]
    which = ("rx_dropped", "rx_bytes", "tx_bytes", "rx_packets", "tx_packets", "rx_multicast")
    dropped, octets, more_octets, packets, more_packets, multicast = counters(interfaces().get(source, ""), *which)
    values = [dropped, octets + more_octets, packets + more_packets, 0, multicast] + [0] * 12
    return ints(NO_ERROR, index, source) + hypers(*values) + text(owner) + ints(status) + hypers(0) + ints(created)


def set_statistics(argument):
    _, index, source, *_ = argument.take("3i17Q")  # the counters are the agent's own
    owner, (status,) = argument.text(), argument.take("i")
    if status not in (VALID, CREATE_REQUEST, UNDER_CREATION, INVALID) or not 1 <= index <= 65535:
        return ints(BAD_VALUE)
    if (status == CREATE_REQUEST) == (index in rows):
        return ints(BAD_VALUE if index in rows else NO_SUCH_NAME)
    if status == INVALID:
        del rows[index]
        return ints(NO_ERROR)
    if source not in interfaces():
        return ints(BAD_VALUE)
    rows[index] = [source, owner, UNDER_CREATION if status == CREATE_REQUEST else status, uptime()]
    return ints(NO_ERROR)


PROCEDURES = {0: lambda _: ints(0), 1: get_system, 3: get_interface, 4: get_statistics, 5: set_statistics}


def answer(call):
    """The reply to a call; struct.error to what is none."""
    message = Reader(call)
    transaction, kind, rpc, program, version, procedure = message.take("6I")
    if kind != 0 or rpc != 2:
        raise struct.error("no call")
    for _ in ("credentials", "verifier"):
        message.take("I")
        message.text(400)
    head = ints(transaction, 1, 0, 0, 0)  # a reply, accepted, no verifier
    if program != PROGRAM:
        return head + ints(PROG_UNAVAIL)
    if version != VERSION:
        return head + ints(PROG_MISMATCH, VERSION, VERSION)
    if procedure not in PROCEDURES:
        return head + ints(PROC_UNAVAIL)
    try:
        return head + ints(SUCCESS) + PROCEDURES[procedure](message)
    except struct.error:
        return head + ints(GARBAGE_ARGS)


class Client(socketserver.StreamRequestHandler):
    def record(self):
        """A call, of one fragment or more."""
        call, last = b"", False
        while not last:
            (mark,) = struct.unpack(">I", self.rfile.read(4))
            last, length = mark & 0x80000000, mark & 0x7FFFFFFF
            if len(call) + length > LONGEST_CALL:
                raise struct.error("too long")
            call += self.rfile.read(length)
        return call

    def handle(self):
        try:
            while True:
                reply = answer(self.record())
                self.wfile.write(ints(0x80000000 | len(reply)) + reply)
        except struct.error:
            pass  # it is at its end, or speaks otherwise


if __name__ == "__main__":
    socketserver.ThreadingTCPServer.allow_reuse_address = socketserver.ThreadingTCPServer.daemon_threads = True
    port = int(sys.argv[1]) if len(sys.argv) > 1 else 9911
    with socketserver.ThreadingTCPServer(("127.0.0.1", port), Client) as server:
        print(f"listening on 127.0.0.1:{server.server_address[1]}", flush=True)
        server.serve_forever()
