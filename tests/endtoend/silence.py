# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Servers that hear and never answer."""

import contextlib
import socket
import threading

from events import something_happened


class SilentServer:
    """Counts what comes in, datagrams or connections, and answers nothing. Leaving the `with` block closes it."""

    def __init__(self, address, kind=socket.SOCK_STREAM):
        self.heard = 0
        self._socket = socket.socket(socket.AF_INET, kind)
        self._socket.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        self._socket.bind(address)
        self._held = []
        threading.Thread(target=self._take if kind == socket.SOCK_DGRAM else self._accept, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        with contextlib.suppress(OSError):  # a datagram socket has nobody at the other end
            self._socket.shutdown(socket.SHUT_RDWR)
        for connection in [*self._held, self._socket]:
            connection.close()

    def _take(self):
        with contextlib.suppress(OSError):  # closed
            while True:
                self._socket.recv(65536)
                self._count()

    def _accept(self):
        self._socket.listen()
        with contextlib.suppress(OSError):  # closed
            while True:
                self._held.append(self._socket.accept()[0])
                self._count()

    def _count(self):
        self.heard += 1
        something_happened()


@contextlib.contextmanager
def dead_end(address):
    """An address at which every attempt to connect waits in vain, as where a route swallows what is sent."""
    family = socket.AF_INET6 if ":" in address[0] else socket.AF_INET
    with contextlib.ExitStack() as stack:
        server = stack.enter_context(socket.socket(family))
        server.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)  # connections of a step before may linger there
        server.bind(address)
        server.listen(0)
        for _ in range(4):  # more than its queue holds
            caller = stack.enter_context(socket.socket(family))
            caller.setblocking(False)
            caller.connect_ex(address)
        yield
