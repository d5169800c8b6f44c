# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""One refresh on the wire, through a relay that takes 50 ms each way. Prints one JSON object: by contender, numbers.

    wire.py BUILD

A poll finds its connection closed, as after ten minutes. A round trip is a change of the talking side on a connection;
connecting one costs another, which the relay cannot delay. What is still said on the one that was closed, a goodbye,
delays nobody and does not count.
"""

import socket
import sys
import threading
import time
from queue import SimpleQueue

import arena as places
from events import wait_until
from program import Program

DELAY = 0.05
RELAY = "127.0.1.1"


class Relay:
    """Passes bytes on to the service, late, and counts."""

    def __init__(self, target):
        self._target = target
        self._listener = socket.create_server((RELAY, 443))
        self._generation = 0
        self.forget()
        threading.Thread(target=self._accept, daemon=True).start()

    def forget(self):
        """Begins to count anew, and leaves out the connections that exist."""
        self._generation += 1
        self.connections = self.round_trips = self.bytes_sent = self.bytes_received = 0

    def _accept(self):
        while True:
            client, _ = self._listener.accept()
            self.connections += 1
            server = socket.create_connection((self._target, 443))
            for end in (client, server):
                end.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            last = {"side": "server", "generation": self._generation}
            self._pass_on(client, server, lambda count, last=last: self._sent(count, last))
            self._pass_on(server, client, lambda count, last=last: self._received(count, last))

    def _sent(self, count, last):
        if last["generation"] != self._generation:
            return
        self.bytes_sent += count
        self.round_trips += last["side"] == "server"
        last["side"] = "client"

    def _received(self, count, last):
        if last["generation"] != self._generation:
            return
        self.bytes_received += count
        last["side"] = "server"

    @staticmethod
    def _pass_on(source, destination, count):
        pieces = SimpleQueue()

        def receive():
            try:
                while piece := source.recv(65536):
                    count(len(piece))
                    pieces.put((time.monotonic() + DELAY, piece))
            except OSError:
                pass  # reset; as good as closed
            pieces.put((time.monotonic() + DELAY, b""))

        def send():
            try:
                while True:
                    due, piece = pieces.get()
                    time.sleep(max(0.0, due - time.monotonic()))
                    if not piece:
                        destination.shutdown(socket.SHUT_WR)
                        return
                    destination.sendall(piece)
            except OSError:
                pass
        for work in (receive, send):
            threading.Thread(target=work, daemon=True).start()


def main():
    build = sys.argv[1]
    arena = places.Arena({**places.ADDRESSES, places.GRAPH: RELAY})
    relay = Relay(places.ADDRESSES[places.GRAPH])
    places.report({name: measure(arena, relay, command) for name, command in places.contenders(build).items()})


def measure(arena, relay, command):
    with Program(arena, command) as program:
        program.wait_for_figure()
        program.read_menu()
        program.settle(1.0)  # the relay holds bytes back
        arena.graph.hang_up()
        program.settle(1.0)
        relay.forget()
        handshakes, asked = arena.graph.handshakes, len(arena.journal)
        arena.count_on()
        began = time.monotonic()
        program.refresh()
        program.wait_for_figure()
        took = time.monotonic() - began
        wait_until(lambda: len(arena.journal) >= asked + 2, "both requests")
        program.settle(1.0)
        return {
            "refresh to figure": took,
            "connections": relay.connections,
            "TLS handshakes": arena.graph.handshakes - handshakes,
            "round trips": relay.round_trips,
            "bytes sent": relay.bytes_sent,
            "bytes received": relay.bytes_received,
        }


if __name__ == "__main__":
    main()
