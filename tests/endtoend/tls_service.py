# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""HTTPS servers that bear the real host names, with certificates of an authority made on the spot."""

import contextlib
import gzip
import http.server
import socket
import ssl
import subprocess
import threading
from dataclasses import dataclass, field

from events import something_happened

SILENCE = None  # what a service answers that never answers


@dataclass(frozen=True)
class Request:
    host: str
    method: str
    target: str
    headers: tuple  # (name, value) as received
    connection: int  # the number of the connection at its host, from 1


@dataclass
class Reply:
    body: bytes
    status: int = 200
    headers: dict = field(default_factory=dict)
    compressed: bool = True  # as the service does


class Authority:
    """A certificate authority in a folder of its own, which can serve as trust store."""

    def __init__(self, folder, name):
        self._keys = folder
        self.store = folder / "store"
        self.store.mkdir()
        self._certificate = self.store / "ca-certificates.crt"
        self._key = folder / "authority.key"
        _openssl("req", "-x509", *_NEW_KEY, "-days", 2, "-keyout", self._key, "-out", self._certificate,
                 "-subj", f"/CN={name}", "-addext", "keyUsage=critical,keyCertSign")
        _openssl("rehash", self.store)  # some readers look for certificates by the hash of their name

    def server_context(self, host, days=2):
        """A TLS server configuration with a fresh certificate for the host; with none, it has expired at once."""
        request, certificate, key = (self._keys / f"{host}.{kind}" for kind in ("csr", "crt", "key"))
        _openssl("req", "-new", *_NEW_KEY, "-keyout", key, "-out", request, "-subj", f"/CN={host}",
                 "-addext", f"subjectAltName=DNS:{host}", "-addext", "basicConstraints=critical,CA:FALSE")
        _openssl("x509", "-req", "-in", request, "-copy_extensions", "copyall", "-days", days,
                 "-CA", self._certificate, "-CAkey", self._key, "-out", certificate)
        return _context(certificate, key)


def self_signed_context(folder, host):
    """The same with a certificate that no authority has signed."""
    certificate, key = folder / f"{host}.crt", folder / f"{host}.key"
    _openssl("req", "-x509", *_NEW_KEY, "-days", 2, "-keyout", key, "-out", certificate, "-subj", f"/CN={host}",
             "-addext", f"subjectAltName=DNS:{host}")
    return _context(certificate, key)


def limited_to(version, context):
    """The configuration with no newer TLS than this, and with nothing of its own against an old one."""
    context.set_ciphers("ALL:@SECLEVEL=0")
    context.minimum_version = context.maximum_version = version
    return context


def _context(certificate, key):
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    return context


_NEW_KEY = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"]


def _openssl(*arguments):
    subprocess.run(["openssl", *map(str, arguments)], check=True, capture_output=True)


class TlsService:
    """One HTTPS server on port 443. It answers as `answer(request)` says and writes every request to the journal."""

    def __init__(self, host, address, context, journal):
        self.host = host
        self.context = context  # may be exchanged; later connections get the new one
        self.journal = journal
        self.answer = lambda request: Reply(b"", status=404)
        self.before_each_reply = b""
        self.connections = 0  # accepted
        self.handshakes = 0  # brought to an end
        self._lock = threading.Lock()
        self._open = set()
        self._closing = threading.Event()
        self._server = _Server((address, 443), _Handler)
        self._server.service = self
        threading.Thread(target=self._server.serve_forever, daemon=True).start()

    def close(self):
        self._closing.set()
        self._server.shutdown()
        self._server.server_close()

    def hang_up(self):
        """Closes every open connection, as servers do after a minute or so."""
        with self._lock:
            for connection in self._open:
                with contextlib.suppress(OSError):  # the client was quicker
                    connection.shutdown(socket.SHUT_RDWR)

    def client_ports(self):
        """Of the connections that are open, at the client's end."""
        with self._lock:
            return [connection.getpeername()[1] for connection in self._open]

    def remember(self, connection):
        with self._lock:
            self._open.add(connection)

    def forget(self, connection):
        with self._lock:
            self._open.discard(connection)

    def count(self, counter):
        with self._lock:
            setattr(self, counter, getattr(self, counter) + 1)
            return getattr(self, counter)

    def reply_to(self, request):
        self.journal.append(request)  # atomic
        reply = self.answer(request)
        something_happened()
        if reply is SILENCE:
            self._closing.wait()
        return reply


class _Server(http.server.ThreadingHTTPServer):
    daemon_threads = True
    block_on_close = False

    def __init__(self, address, handler):
        if ":" in address[0]:
            self.address_family = socket.AF_INET6
        super().__init__(address, handler)

    def handle_error(self, request, client_address):
        pass  # a client that hangs up is no failure of the server; the steps judge the client by its deeds


class _Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"  # connections stay open
    wbufsize = -1  # head and body in one piece
    disable_nagle_algorithm = True

    def setup(self):
        service = self.server.service
        self._connection = service.count("connections")
        self.request = service.context.wrap_socket(self.request, server_side=True)
        service.count("handshakes")
        service.remember(self.request)
        super().setup()

    def finish(self):
        self.server.service.forget(self.request)
        super().finish()

    def do_GET(self):
        service = self.server.service
        reply = service.reply_to(Request(service.host, self.command, self.path, tuple(self.headers.items()),
                                         self._connection))
        if reply is SILENCE:
            self.close_connection = True
            return
        body, encoding = reply.body, {}
        if reply.compressed and "gzip" in self.headers.get("Accept-Encoding", ""):
            body, encoding = gzip.compress(body), {"Content-Encoding": "gzip"}
        self.wfile.write(service.before_each_reply)
        self.send_response(reply.status)
        for name, value in {**encoding, "Content-Length": str(len(body)), **reply.headers}.items():
            self.send_header(name, value)
        self.end_headers()
        if self.command != "HEAD":
            self.wfile.write(body)

    do_HEAD = do_POST = do_PUT = do_DELETE = do_OPTIONS = do_PATCH = do_GET  # to be written down and found wrong

    def log_message(self, *_):
        pass
