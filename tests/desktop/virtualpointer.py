# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A mouse for wlroots compositors, which have none without hardware: spoken to in Wayland's own messages."""

import socket
import struct
import time

_DISPLAY, _REGISTRY, _CALLBACK, _MANAGER, _POINTER = 1, 2, 3, 4, 5  # ids of objects
_SYNC, _GET_REGISTRY, _BIND, _CREATE = 0, 1, 0, 0  # requests, each of its own object
_MOVE_TO, _BUTTON, _FRAME = 1, 2, 4
_MANAGER_INTERFACE = "zwlr_virtual_pointer_manager_v1"
_FIRST_BUTTON = 0x110


class VirtualPointer:
    """A mouse that is plugged in for as long as the object lives."""

    def __init__(self, path, size):
        self._size = size
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(str(path))
        self._send(_DISPLAY, _GET_REGISTRY, struct.pack("=I", _REGISTRY))
        self._round_trip()
        self._send(_REGISTRY, _BIND, struct.pack("=I", self._manager_name) + _text(_MANAGER_INTERFACE)
                   + struct.pack("=II", 1, _MANAGER))
        self._send(_MANAGER, _CREATE, struct.pack("=II", 0, _POINTER))

    def move(self, x, y):
        self._send(_POINTER, _MOVE_TO, struct.pack("=IIIII", _now(), int(x), int(y), *self._size))
        self._send(_POINTER, _FRAME)

    def click(self, button):
        for state in (1, 0):
            self._send(_POINTER, _BUTTON, struct.pack("=III", _now(), _FIRST_BUTTON + button - 1, state))
            self._send(_POINTER, _FRAME)

    def _send(self, target, request, arguments=b""):
        self._socket.sendall(struct.pack("=IHH", target, request, 8 + len(arguments)) + arguments)

    def _round_trip(self):
        """Reads the list of what the compositor offers, to its end."""
        self._send(_DISPLAY, _SYNC, struct.pack("=I", _CALLBACK))
        while True:
            sender, _event, size = struct.unpack("=IHH", self._read(8))
            message = self._read(size - 8)
            if sender == _CALLBACK:
                return
            if sender == _REGISTRY and _MANAGER_INTERFACE.encode() in message:
                self._manager_name = struct.unpack_from("=I", message)[0]

    def _read(self, size):
        return self._socket.recv(size, socket.MSG_WAITALL)


def _text(text):
    data = text.encode() + b"\0"
    return struct.pack("=I", len(data)) + data.ljust((len(data) + 3) // 4 * 4, b"\0")


def _now():
    return int(time.monotonic() * 1000) & 0xFFFFFFFF
