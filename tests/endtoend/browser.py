# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A browser that opens nothing and writes down what it has been given."""

import json
import sys
from pathlib import Path

import namespace
from events import poll_until

_PROGRAM = """#!{python}
import json, os, sys
mask = os.umask(0)
files = {{}}
for number in os.listdir("/proc/self/fd"):
    try:
        files[number] = os.readlink("/proc/self/fd/" + number)
    except OSError:
        pass  # the listing itself
ignored = next(line.split()[1] for line in open("/proc/self/status") if line.startswith("SigIgn"))
blocked = next(line.split()[1] for line in open("/proc/self/status") if line.startswith("SigBlk"))
given = dict(arguments=sys.argv[1:], environment=dict(os.environ), umask=oct(mask), files=files,
             signals=[int(ignored, 16), int(blocked, 16)])
path = "{folder}/%d" % os.getpid()
with open(path + ".part", "w") as file:
    json.dump(given, file)
os.rename(path + ".part", path + ".json")
"""


class Browser:
    """What Qt finds as the system's opener of addresses, in front of the path."""

    def __init__(self):
        programs, self._records = namespace.private_folder("browser"), namespace.private_folder("browser-records")
        opener = programs / "xdg-open"
        opener.write_text(_PROGRAM.format(python=sys.executable, folder=self._records))
        opener.chmod(0o755)
        self.environment = {"PATH": f"{programs}:/usr/bin:/bin"}

    def wait_for(self, address):
        """What the browser was given along with the address."""
        poll_until(lambda: self._given(address), f"the browser to be given {address}")
        return self._given(address)[-1]

    def everything(self):
        """All that it was ever given, as bytes."""
        return b"".join(record.read_bytes() for record in self._records.glob("*.json"))

    def forget(self):
        for record in self._records.iterdir():
            record.unlink()

    def _given(self, address):
        records = sorted(Path(self._records).glob("*.json"), key=lambda record: record.stat().st_mtime_ns)
        return [given for given in map(json.loads, (record.read_text() for record in records))
                if given["arguments"] == [address]]
