# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""An HTTP proxy that writes down all that it gets to see."""

import socket
import socketserver
import threading

from events import something_happened


class Proxy:
    """Opens tunnels, or answers every request for one with the refusal."""

    def __init__(self, address, refusal=None):
        self.heads = []  # of the requests for tunnels
        self.seen = b""  # every byte that went through, either way
        self.refusal = refusal
        self.origin = f"http://{address[0]}:{address[1]}"
        self._server = _Server(address, _Handler)
        self._server.proxy = self
        threading.Thread(target=self._server.serve_forever, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._server.shutdown()
        self._server.server_close()


class Script:
    """Serves a script that tells which proxy to take."""

    def __init__(self, address, script):
        self.address = f"pac+http://{address[0]}:{address[1]}/proxy.pac"
        self._server = _Server(address, _ScriptHandler)
        self._server.script = script.encode()
        threading.Thread(target=self._server.serve_forever, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._server.shutdown()
        self._server.server_close()


class _Server(socketserver.ThreadingTCPServer):
    daemon_threads = True
    allow_reuse_address = True


class _Handler(socketserver.StreamRequestHandler):
    rbufsize = 0  # what follows the head belongs to the tunnel

    def handle(self):
        proxy = self.server.proxy
        head = b""
        while not head.endswith(b"\r\n\r\n"):
            piece = self.rfile.read(1)
            if not piece:
                return
            head += piece
        proxy.heads.append(head.decode())
        something_happened()
        method, target, _ = head.decode().split(" ", 2)
        if proxy.refusal or method != "CONNECT":
            self.wfile.write((proxy.refusal or "HTTP/1.1 405 No\r\nContent-Length: 0\r\n\r\n").encode())
            return
        host, port = target.rsplit(":", 1)
        with socket.create_connection((host, int(port))) as far:
            self.wfile.write(b"HTTP/1.1 200 Connection established\r\n\r\n")
            back = threading.Thread(target=self._pass_on, args=[far, self.request], daemon=True)
            back.start()
            self._pass_on(self.request, far)
            back.join()

    def _pass_on(self, source, sink):
        try:
            while piece := source.recv(65536):
                self.server.proxy.seen += piece
                sink.sendall(piece)
            sink.shutdown(socket.SHUT_WR)
        except OSError:
            pass  # one end has gone


class _ScriptHandler(socketserver.StreamRequestHandler):
    def handle(self):
        while self.rfile.readline().strip():
            pass
        script = self.server.script
        self.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Type: application/x-ns-proxy-autoconfig\r\n"
                         b"Content-Length: %d\r\nConnection: close\r\n\r\n" % len(script) + script)
