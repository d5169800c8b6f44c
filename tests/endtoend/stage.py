# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Everything around the program: servers under the real names, a session bus, a home folder."""

import os
import subprocess

import namespace
from events import Failure, Recording, wait_until
from panel import Panel
from tls_service import Authority, TlsService
from vantelo_process import PreferenceFile, VanteloProcess

GRAPH, WEBSITE = "graph.facebook.com", "vantelo.example"
# Places that only a click leads to. They are served too, so that an unasked visit would be seen.
ELSEWHERE = ["developers.facebook.com", "adsmanager.facebook.com"]
ADDRESSES = {host: f"127.0.0.{number}" for number, host in enumerate([GRAPH, WEBSITE, *ELSEWHERE], start=2)}


class Stage:
    def __init__(self, binary):
        self.binary = binary
        self.authority = Authority(namespace.private_folder("trusted"), "A trusted authority")
        self.stranger = Authority(namespace.private_folder("stranger"), "Nobody you know")
        namespace.furnish(ADDRESSES, self.authority.store)
        self.journal = []  # requests to all hosts, in order of arrival
        self.services = {host: TlsService(host, address, self.authority.server_context(host), self.journal)
                         for host, address in ADDRESSES.items()}
        self.graph, self.website = self.services[GRAPH], self.services[WEBSITE]
        self.home = namespace.private_folder("home")
        self.environment = _environment(self.home)
        self.preferences = PreferenceFile(self.home / ".config")
        self.bus = _session_bus(self.environment)
        self.monitor = BusMonitor(self.environment)
        self.panel = Panel()

    def close(self):
        for service in self.services.values():
            service.close()
        self.monitor.stop()
        self.bus.kill()
        self.bus.wait()

    def start(self, under=(), **environment):
        """Runs the program, with an empty journal."""
        self.journal.clear()
        self.panel.forget()
        return VanteloProcess(self.binary, {**self.environment, **environment}, under)

    def wait_for_requests(self, count):
        while (so_far := len(self.journal)) < count:  # patience is for the next one: many take a busy machine long
            wait_until(lambda: len(self.journal) > so_far, lambda: f"request {count}; so far {self.targets()}")

    def connections(self, since=None):
        """(connections, TLS handshakes) of each host, or what came since an earlier result; hosts without any are
        left out."""
        before = since or {}
        now = {host: (service.connections, service.handshakes) for host, service in self.services.items()}
        new = {host: tuple(a - b for a, b in zip(now[host], before.get(host, (0, 0)))) for host in now}
        return {host: counts for host, counts in new.items() if any(counts)}

    def targets(self):
        """What was asked for, as "host /path?query" in order."""
        return [f"{request.host} {request.target}" for request in self.journal]


class BusMonitor:
    """Writes down every message on the session bus, or on another one."""

    def __init__(self, environment, address=None):
        bus = ["--address", address] if address else ["--session"]
        self._process = subprocess.Popen(["dbus-monitor", *bus, "--binary"], env=environment, stdout=subprocess.PIPE)
        self._messages = Recording(self._process.stdout)
        wait_until(lambda: self._messages.bytes, "the bus monitor")

    def stop(self):
        self._process.kill()
        self._process.wait()
        self._messages.finish()

    def messages(self):
        return self._messages.bytes


def _environment(home):
    """The whole environment of the program: nothing of the caller's gets through."""
    (home / ".config").mkdir(mode=0o700)
    (home / "runtime").mkdir(mode=0o700)
    return {
        "HOME": str(home),
        "PATH": "/usr/bin:/bin",
        "XDG_CONFIG_HOME": str(home / ".config"),
        "XDG_RUNTIME_DIR": str(home / "runtime"),
        "QT_QPA_PLATFORM": "offscreen",
        **_german(namespace.private_folder("locale")),
    }


def _german(folder):
    """A locale whose decimal point is a comma: neither figures nor requests may follow it."""
    made = subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", folder / "de_DE.UTF-8"], capture_output=True)
    environment = {"LOCPATH": str(folder), "LC_ALL": "de_DE.UTF-8"}
    point = subprocess.run(["locale", "decimal_point"], env=environment, capture_output=True, text=True)
    if made.returncode == 0 and point.stdout.strip() == ",":
        return environment
    print("(no German locale can be made here; the program runs in the C locale)")
    return {"LC_ALL": "C.UTF-8"}


def _session_bus(environment):
    address = f"unix:path={environment['XDG_RUNTIME_DIR']}/bus"
    bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address", f"--address={address}"],
                           env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    if not bus.stdout.readline():
        raise Failure("The session bus does not start.")
    environment["DBUS_SESSION_BUS_ADDRESS"] = address
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = address
    return bus
