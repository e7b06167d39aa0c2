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
GET, GETNEXT = 1, 2
VALID, CREATE_REQUEST, UNDER_CREATION, INVALID = 1, 2, 3, 4
NO_ERROR, NO_SUCH_NAME, BAD_VALUE = 0, 2, 3
LONGEST_CALL = 65536
BEGUN = time.monotonic()


class Garbage(Exception):
    """Arguments that end early or hold a text that is too long."""


class Reader:
    """Takes an argument apart, field by field."""

    def __init__(self, octets):
        self.octets, self.at = octets, 0

    def take(self, count):
        self.at += count
        if self.at > len(self.octets):
            raise Garbage
        return self.octets[self.at - count : self.at]

    def int(self):
        return struct.unpack(">i", self.take(4))[0]

    def unsigned(self):
        return struct.unpack(">I", self.take(4))[0]

    def hyper(self):
        return struct.unpack(">Q", self.take(8))[0]

    def text(self, bound=255):
        length = self.unsigned()
        if length > bound:
            raise Garbage
        return self.take((length + 3) // 4 * 4)[:length]


def ints(*values):
    return b"".join(struct.pack(">I", value & 0xFFFFFFFF) for value in values)


def hypers(*values):
    return b"".join(struct.pack(">Q", value) for value in values)


def text(value):
    octets = value if isinstance(value, bytes) else value.encode()
    octets = octets[:255]
    return ints(len(octets)) + octets + bytes(-len(octets) % 4)


def byte_list(octets):
    """One unit for each octet: never packed."""
    return ints(len(octets), *octets)


def uptime():
    return int((time.monotonic() - BEGUN) * 100) & 0xFFFFFFFF


def of_interface(name, file):
    try:
        with open(f"/sys/class/net/{name}/{file}", encoding="ascii") as value:
            return value.read().strip()
    except OSError:
        return ""


def interfaces():
    """Names by ifIndex, in their order."""
    names = {int(of_interface(name, "ifindex") or 0): name for name in os.listdir("/sys/class/net")}
    return {index: names[index] for index in sorted(names) if index > 0}


def counter(name, which):
    return int(of_interface(name, f"statistics/{which}") or 0)


def find(rows, index, get_type):
    """The index of the row that a key means, or None."""
    if get_type == GET:
        return index if index in rows else None
    return min((other for other in rows if other > index), default=None)


def get_system(_):
    version = " ".join(os.uname())
    return text(version) + ints(uptime()) + text("") + text(os.uname().nodename) + text("") + text("0.0") + ints(72)


def get_interface(argument):
    index = find(interfaces(), argument.int(), argument.int())
    if index is None:
        return ints(NO_SUCH_NAME, 0) + text("") + ints(0, 0, 0) + byte_list(b"") + ints(*[0] * 22)
    name = interfaces()[index]
    octets = bytes.fromhex(of_interface(name, "address").replace(":", ""))
    up = 1 if of_interface(name, "operstate") in ("up", "unknown") else 2
    speed = max(0, int(of_interface(name, "speed") or 0)) * 1_000_000
    received = [counter(name, f"rx_{which}") for which in ("bytes", "packets", "multicast", "dropped", "errors")]
    sent = [counter(name, f"tx_{which}") for which in ("bytes", "packets")]
    return (
        ints(NO_ERROR, index)
        + text(name)
        + ints(6, int(of_interface(name, "mtu") or 0), min(speed, 0xFFFFFFFF))
        + byte_list(octets)
        + ints(1, up, 0, *received, 0, *sent, 0, counter(name, "tx_dropped"), counter(name, "tx_errors"), 0)
        + ints(*[0] * 7)  # what a switch would tell of its port
    )


# Rows of the Ethernet statistics: interface, owner, status, create time.
rows = {index: [index, b"monitor", VALID, 0] for index in interfaces()}


def get_statistics(argument):
    index = find(rows, argument.int(), argument.int())
    if index is None:
        return ints(NO_SUCH_NAME, 0, 0) + hypers(*[0] * 17) + text("") + ints(0) + hypers(0) + ints(0)
    source, owner, status, created = rows[index]
    name = interfaces().get(source, "")
    octets = counter(name, "rx_bytes") + counter(name, "tx_bytes")
    packets = counter(name, "rx_packets") + counter(name, "tx_packets")
    counters = [counter(name, "rx_dropped"), octets, packets, 0, counter(name, "rx_multicast")] + [0] * 12
    return ints(NO_ERROR, index, source) + hypers(*counters) + text(owner) + ints(status) + hypers(0) + ints(created)


def set_statistics(argument):
    argument.int()
    index, source = argument.int(), argument.int()
    for _ in range(17):
        argument.hyper()
    owner, status = argument.text(), argument.int()
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
    """The reply to a call; None to what is none."""
    message = Reader(call)
    transaction, kind, rpc = message.unsigned(), message.unsigned(), message.unsigned()
    if kind != 0 or rpc != 2:
        return None
    program, version, procedure = message.unsigned(), message.unsigned(), message.unsigned()
    for _ in range(2):  # credentials and verifier
        message.unsigned()
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
    except Garbage:
        return head + ints(GARBAGE_ARGS)


class Client(socketserver.StreamRequestHandler):
    def record(self):
        """A call, of one fragment or more; None at the end."""
        call, last = b"", False
        while not last:
            head = self.rfile.read(4)
            if len(head) < 4:
                return None
            (mark,) = struct.unpack(">I", head)
            last, length = mark & 0x80000000, mark & 0x7FFFFFFF
            if len(call) + length > LONGEST_CALL:
                return None
            call += self.rfile.read(length)
        return call

    def handle(self):
        while (call := self.record()) is not None:
            try:
                reply = answer(call)
            except Garbage:
                return
            if reply is None:
                return
            self.wfile.write(struct.pack(">I", 0x80000000 | len(reply)) + reply)


class Agent(socketserver.ThreadingTCPServer):
    allow_reuse_address = daemon_threads = True


if __name__ == "__main__":
    with Agent(("127.0.0.1", int(sys.argv[1]) if len(sys.argv) > 1 else 9911), Client) as server:
        print(f"listening on 127.0.0.1:{server.server_address[1]}", flush=True)
        server.serve_forever()
