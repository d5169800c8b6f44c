# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Where the contenders meet: a network namespace with the account's service under its real name, and a desk in it."""

import json
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
HERE = Path(__file__).resolve().parent
sys.path += [str(HERE.parent / "tests" / "endtoend"), str(HERE.parent / "tests" / "support")]

import namespace  # noqa: E402
from figures import TODAY_FIELDS, WEEK_FIELDS, delivering, release  # noqa: E402
from stage import ADDRESSES, GRAPH, WEBSITE  # noqa: E402
from tls_service import Authority, TlsService  # noqa: E402
from vantelo_process import PreferenceFile  # noqa: E402

from desk import Desk  # noqa: E402

TOKEN, ACCOUNT = "EAABbenchmark", "1234567890"


def insights(fields, preset):
    return f"https://{GRAPH}/v21.0/act_{ACCOUNT}/insights?fields={fields}&date_preset={preset}&access_token={TOKEN}"


REQUESTS = [insights(TODAY_FIELDS, "today"), insights(WEEK_FIELDS, "last_7d")]


def contenders(build):
    """What is compared, by the name in the tables: command lines."""
    return {
        "Vantelo": [f"{build}/vantelo"],
        "limit": [f"{build}/limit", *REQUESTS],
        "Python": ["/usr/bin/python3", f"{HERE}/contenders/indicator.py", *REQUESTS],
        "shell": ["/bin/sh", f"{HERE}/contenders/poll.sh", *REQUESTS],
    }


class Arena:
    """Enters a namespace of its own; a script makes one, first of all."""

    def __init__(self, addresses=ADDRESSES):
        namespace.enter()
        authority = Authority(namespace.private_folder("trusted"), "A trusted authority")
        namespace.furnish(addresses, authority.store)
        self.journal = []
        self.services = {host: TlsService(host, ADDRESSES[host], authority.server_context(host), self.journal)
                         for host in (GRAPH, WEBSITE)}
        self.graph = self.services[GRAPH]
        self.services[WEBSITE].answer = release("0.0.1")
        self.desk = Desk("desk")
        self.preferences = PreferenceFile(self.desk.home / ".config")
        self.configure()
        self.impressions = 12344
        self.count_on()

    def configure(self, token=TOKEN):
        self.preferences.write(accessToken=token, adAccountId=ACCOUNT)

    def count_on(self):
        """One impression more from the next answer on."""
        self.impressions += 1
        self.graph.answer = delivering(self.impressions)


def report(result):
    print(json.dumps(result), flush=True)
