# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The service on loopback. It follows a script of replies, one for each fetch that is to come."""

import collections
import contextlib
import re
import selectors
import socket
import struct
import weakref

from model import Failed
from replies import CLOSE, REFUSE, RESET, SILENCE

_RESET_ON_CLOSE = struct.pack("ii", 1, 0)


class Unasked(Exception):
    """A request that nobody announced."""


class Service:
    def __init__(self, selector):
        self._selector = selector
        self._anchor = _bound(0)  # keeps the port while nobody listens
        self.port = self._anchor.getsockname()[1]
        self._listener = None
        self._connections = {}  # socket: bytes received so far
        self._lost = weakref.WeakSet()  # those of them on which no request may come any more
        self._script = collections.deque()
        self._broken = {}  # {target: exchange} of this command, which Qt may ask for again on its own
        self.given = collections.Counter()
        self.repeated = 0
        self._counted = True
        self._holding, self.held = False, []
        self.on_request = None  # called with (fetch, reply) when a fetch has been answered
        self._listen()

    @property
    def origin(self):
        return f"http://127.0.0.1:{self.port}"

    def expect(self, exchanges, counted=True):
        """The fetches to come, each with its reply."""
        self._counted = counted
        self._holding = False
        self._script = collections.deque(exchanges)
        if self._broken:
            self.hang_up()  # so that a repetition which the program did not wait for is not taken for a new request
        self._broken = {}
        if self._listener is None:
            self._listen()
        self._refuse_if_next()
        if self._listener is None:
            self.hang_up()

    def hold(self):
        """From now on requests wait, in `held`, until they are answered one by one."""
        self.expect([])
        self._holding, self.held = True, []

    def answer_held(self, fetch, reply):
        """Answers the request that has waited longest."""
        connection, target = self.held.pop(0)
        if target != fetch.target:
            raise Unasked(f"asked for {target}, expected {fetch.target}")
        self._count(fetch, reply)
        self._send(connection, reply)

    def missing(self):
        """The fetches that were announced and did not come; refused ones do not reach the service."""
        return [fetch for fetch, reply in self._script if reply.then != REFUSE]

    def hang_up(self):
        """Ends every connection, those too that were not taken up yet."""
        if self._listener:
            self._listener.setblocking(False)
            with contextlib.suppress(BlockingIOError):
                while True:
                    self._listener.accept()[0].close()
            self._listener.setblocking(True)
        for connection in list(self._connections):
            self._drop(connection)

    def lose_connections(self):
        """Those that exist now have died, and nobody was told: the machine slept, or is somewhere else."""
        self._lost.update(self._connections)

    def _listen(self):
        self._listener = _bound(self.port)
        self._listener.listen()
        self._selector.register(self._listener, selectors.EVENT_READ, self._accept)

    def _refuse_if_next(self):
        """From before it is asked until another one is due, a fetch to be refused finds nobody listening."""
        while self._script and self._script[0][1].then == REFUSE:
            fetch, reply = self._script.popleft()
            self._count(fetch, reply)
            if self._listener:
                self._selector.unregister(self._listener)
                self._listener.close()
                self._listener = None

    def _accept(self, listener):
        connection, _ = listener.accept()
        connection.settimeout(30)
        self._connections[connection] = b""
        self._selector.register(connection, selectors.EVENT_READ, self._receive)

    def _receive(self, connection):
        try:
            received = connection.recv(65536)
        except ConnectionError:
            received = b""
        self._connections[connection] += received
        head, end, rest = self._connections[connection].partition(b"\r\n\r\n")
        if not received:
            self._drop(connection)
        elif end and connection in self._lost:
            raise Unasked("asked over a connection from before a sleep, or of another network")
        elif end:
            self._connections[connection] = rest
            self._answer(connection, re.match(rb"GET (\S+) HTTP/1.1\r\n", head)[1].decode())

    def _answer(self, connection, target):
        if self._holding:
            self.held.append((connection, target))
            return
        fetch, reply = self._reply_to(target)
        self._refuse_if_next()
        self._send(connection, reply)
        if self.on_request:
            self.on_request(fetch, reply)

    def _send(self, connection, reply):
        with contextlib.suppress(OSError):  # a client need not wait for the end of a reply
            connection.sendall(reply.wire)
        if reply.then == RESET:
            connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, _RESET_ON_CLOSE)
        if reply.then in (CLOSE, RESET):
            self._drop(connection)
        if self._listener is None and reply.then != SILENCE:
            self.hang_up()

    def _reply_to(self, target):
        if self._script and self._script[0][0].target == target:
            fetch, reply = self._script.popleft()
            self._count(fetch, reply)
            if isinstance(reply.outcome, Failed):
                self._broken[target] = fetch, reply
            return fetch, reply
        if target in self._broken:
            self.repeated += 1
            return self._broken[target]
        raise Unasked(f"asked for {target}, expected {[fetch.target for fetch, _ in self._script]}")

    def _count(self, fetch, reply):
        if self._counted:
            self.given[fetch.preset, reply.kind] += 1

    def _drop(self, connection):
        self._selector.unregister(connection)
        del self._connections[connection]
        connection.close()


def refused_connections():
    """How many attempts to connect have failed in this network namespace, by the kernel's count."""
    with open("/proc/net/snmp", encoding="ascii") as file:
        names, values = (line.split() for line in file if line.startswith("Tcp:"))
    return int(dict(zip(names, values))["AttemptFails"])


def _bound(port):
    bound = socket.socket()
    bound.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    bound.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEPORT, 1)
    bound.bind(("127.0.0.1", port))
    return bound
