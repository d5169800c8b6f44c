# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A private corner of the machine, in which the real host names lead to this test's own servers.

It has a loopback interface and nothing else, so no byte can leave; its own process numbers, so that every
process in it dies with the first; and its own mounts, so that nothing of it stays behind.
"""

import fcntl
import os
import socket
import struct
import subprocess
import sys
from pathlib import Path

INSIDE = "--inside"
NOT_RUN = 77  # the exit code that stands for "skipped"

_UNSHARE = ["unshare", "--user", "--map-root-user", "--net", "--mount", "--pid", "--fork", "--kill-child",
            "--mount-proc"]
_PRIVATE_FOLDER = Path("/run")  # a fresh file system hides the system's own sockets there, a name cache's included
_MOUNT_PRIVATE_FOLDER = ["mount", "-t", "tmpfs", "-o", "mode=0700", "none", str(_PRIVATE_FOLDER)]


def enter():
    """Runs the script again inside, and does not return until it is there."""
    if INSIDE in sys.argv:
        sys.argv.remove(INSIDE)
        subprocess.run(_MOUNT_PRIVATE_FOLDER, check=True)
        return
    probe = subprocess.run([*_UNSHARE, *_MOUNT_PRIVATE_FOLDER], capture_output=True, text=True)
    if probe.returncode == 0:
        os.execvp(_UNSHARE[0], [*_UNSHARE, sys.executable, *sys.argv, INSIDE])
    reason = f"this system does not let the test make a network namespace ({probe.stderr.strip()})"
    if os.environ.get("CI"):
        sys.exit(f"FAILED: {reason}, and in CI it has to run.")
    print(f"NOT RUN: {reason}.")
    sys.exit(NOT_RUN)


def furnish(addresses, trusted_certificates):
    """Brings up loopback, gives the names their addresses, and makes the folder the only trust store."""
    set_network(up=True)
    name_hosts(addresses)
    _mount_over("/etc/hosts", _hosts())
    ask_name_server(None)
    _mount_over("/etc/nsswitch.conf", _hosts().with_name("nsswitch.conf"))
    _mount_over("/etc/resolv.conf", _hosts().with_name("resolv.conf"))
    _mount_over("/etc/ssl/certs", trusted_certificates)


def name_hosts(addresses):
    """Gives the names these addresses, from now on."""
    _hosts().write_text("127.0.0.1 localhost\n" + "".join(f"{ip} {name}\n" for name, ip in addresses.items()))


def ask_name_server(address):
    """Lets programs that start from now on ask this one for names that name_hosts() has not told; None for nobody."""
    source, server = ("files dns", f"nameserver {address}\n") if address else ("files", "")
    _hosts().with_name("nsswitch.conf").write_text(f"passwd: files\ngroup: files\nhosts: {source}\n")
    _hosts().with_name("resolv.conf").write_text(server)


def _hosts():
    return private_folder("hosts") / "hosts"


def hide_temporary_files(*kept):
    """Gives the processes inside a /tmp of their own, with the sockets and locks of X servers. The kept paths stay."""
    temporary = private_folder("tmp")
    sockets = temporary / ".X11-unix"
    sockets.mkdir()
    sockets.chmod(0o1777)  # some X servers want it as it is on a whole system
    for path in kept:
        if path.is_relative_to("/tmp"):
            folder = path if path.is_dir() else path.parent
            place = temporary / folder.relative_to("/tmp")
            place.mkdir(parents=True, exist_ok=True)
            _mount_over(place, folder)
    subprocess.run(["mount", "--rbind", str(temporary), "/tmp"], check=True)


def private_folder(name):
    """A folder for this user alone; it lives in memory and goes with the namespace."""
    folder = _PRIVATE_FOLDER / name
    folder.mkdir(mode=0o700, exist_ok=True)
    return folder


def _mount_over(place, source):
    if os.path.islink(place) and not os.path.exists(place):  # into a folder that is hidden in here
        place = Path(os.path.realpath(place))
        place.parent.mkdir(parents=True, exist_ok=True)
        place.touch()
    subprocess.run(["mount", "--bind", str(source), os.path.realpath(place)], check=True)


def set_network(up):
    """Brings the only interface up, or down as when the cable is pulled."""
    set_interface_flags, flags = 0x8914, 0x1 if up else 0
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        fcntl.ioctl(any_socket, set_interface_flags, struct.pack("16sh14x", b"lo", flags))
