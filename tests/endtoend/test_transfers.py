#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What lies between the program and the service: certificates, redirects, proxies, networks that come and go.

    test_transfers.py path/to/vantelo
"""

import contextlib
import socket
import ssl
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

import namespace
from events import Failure, expect, wait_until
from figures import delivering, error_rows
from proxy import Proxy, Script
from scenario import ACCOUNT, FEED, START, TODAY, TOKEN, WEEK, run, start_and_settle
from silence import dead_end
from stage import ADDRESSES, ELSEWHERE, GRAPH, WEBSITE
from tls_service import SILENCE, Reply, TlsService, limited_to, self_signed_context

INSECURE = "A secure connection to the server could not be made."
ASTRAY = "The server redirected the request in a way that cannot be followed."


def a_certificate_that_does_not_fit_gets_no_request(stage):
    trusted = stage.graph.context
    for what, context in {
        "a stranger's": stage.stranger.server_context(GRAPH),
        "self-signed": self_signed_context(namespace.private_folder("self-signed"), GRAPH),
        "expired": stage.authority.server_context(GRAPH, days=0),
        "another host's": stage.authority.server_context(WEBSITE),
        "TLS 1.0": limited_to(ssl.TLSVersion.TLSv1, stage.authority.server_context(GRAPH)),
        "TLS 1.1": limited_to(ssl.TLSVersion.TLSv1_1, stage.authority.server_context(GRAPH)),
    }.items():
        stage.graph.context = context
        connections = stage.graph.connections
        fails(stage, INSECURE, requests=[FEED])
        expect(stage.graph.connections > connections, True, f"Whether the service was tried with a certificate {what}")
    stage.graph.context = trusted


def tls_1_2_is_enough(stage):
    trusted = stage.graph.context
    stage.graph.context = limited_to(ssl.TLSVersion.TLSv1_2, stage.authority.server_context(GRAPH))
    with start_and_settle(stage):
        pass
    stage.graph.context = trusted


def a_redirect_takes_the_token_nowhere(stage):
    figures = delivering(impressions=12345)
    stage.website.answer = lambda request: figures(request) if "insights" in request.target else Reply(b"{}")
    stage.graph.answer = lambda request: Reply(b"", 302, {"Location": f"https://{WEBSITE}{moved(request.target)}"})

    def once():  # a request may go out twice, which Qt does when a connection is closed under it, and be read late
        return list(dict.fromkeys(stage.targets()))

    with stage.start():
        stage.panel.wait_for_title("🟢 12,345")
        wait_until(lambda: len(once()) >= 5, lambda: f"the fifth request; so far {stage.targets()}")
    expect(once(), [TODAY, f"{WEBSITE} {moved(TODAY)}", WEEK, f"{WEBSITE} {moved(WEEK)}", FEED], "Requests")
    told = [request for request in stage.journal if request.host != GRAPH and TOKEN in str(request)]
    expect(told, [], "Requests to another host that tell the token")


def a_redirect_away_from_tls_is_not_followed(stage):
    with socket.create_server((ADDRESSES[GRAPH], 80)) as plain:
        plain.setblocking(False)
        stage.graph.answer = redirect(f"http://{GRAPH}/insights?access_token={TOKEN}")
        fails(stage, ASTRAY, requests=[TODAY, FEED])
        with contextlib.suppress(BlockingIOError):
            plain.accept()
            raise Failure("The program has called without TLS.")


def endless_redirects_end(stage):
    stage.graph.answer = lambda request: Reply(b"", 302, {"Location": request.target})
    with stage.start():
        stage.panel.wait_for_title("⚪ ERR")
        stage.panel.wait_for_rows(error_rows_for(ASTRAY))
        wait_until(lambda: FEED in stage.targets(), "the update check")
    expect(set(stage.targets()), {TODAY, FEED}, "Requests")


def a_service_on_ipv6_alone_is_reached(stage):
    for address in ("::1", f"::1 {GRAPH}\n127.0.0.99"):  # the latter: one more address where nobody answers
        namespace.name_hosts({**ADDRESSES, GRAPH: address})
        with contextlib.closing(TlsService(GRAPH, "::1", stage.graph.context, stage.journal)) as service:
            service.answer = delivering(impressions=12345)
            with start_and_settle(stage):
                pass
        expect(stage.targets(), START, "Requests")
    namespace.name_hosts(ADDRESSES)


def a_family_of_addresses_that_is_dead_holds_nothing_up(stage):
    """The service has an IPv6 and an IPv4 address."""
    namespace.name_hosts({**ADDRESSES, GRAPH: f"{V6} {GRAPH}\n{ADDRESSES[GRAPH]}"})
    with dead_end((V6, 443)), start_and_settle(stage):
        pass
    namespace.name_hosts({**ADDRESSES, GRAPH: f"{V6} {GRAPH}\n{DEAD_V4}"})
    with contextlib.closing(TlsService(GRAPH, V6, stage.graph.context, stage.journal)) as service:
        service.answer = delivering(impressions=12345)
        with dead_end((DEAD_V4, 443)), start_and_settle(stage):
            pass
    namespace.name_hosts(ADDRESSES)


def a_first_transfer_that_breaks_off_is_told_at_once_with_two_families_of_addresses(stage):
    namespace.name_hosts({**ADDRESSES, GRAPH: f"{V6} {GRAPH}\n{ADDRESSES[GRAPH]}"})
    with contextlib.closing(TlsService(GRAPH, V6, stage.graph.context, stage.journal)) as service:
        for one in (service, stage.graph):
            one.answer = lambda request, one=one: one.hang_up() or SILENCE
        fails(stage, "The connection was lost.", requests=[TODAY, FEED])
    namespace.name_hosts(ADDRESSES)


def what_comes_before_an_answer_does_not_shift_the_answers(stage):
    stage.graph.before_each_reply = b"HTTP/1.1 103 Early Hints\r\nLink: </a>; rel=preload\r\n\r\n"
    with start_and_settle(stage):
        stage.graph.answer = delivering(impressions=12346)
        stage.panel.click("🔄 Refresh")
        stage.panel.wait_for_title("🟢 12,346")
    stage.graph.before_each_reply = b""


def a_standard_output_that_nobody_reads_ends_nothing(stage):
    """What is written is that the update check has failed."""
    for hosts in ({}, ADDRESSES):  # without a network, and with one
        namespace.name_hosts(hosts)
        stage.website.answer = lambda request: Reply(b"no feed")
        with stage.start(under=[sys.executable, "-c", WITHOUT_READER]) as program:
            stage.panel.wait_for_title("🟢 12,345" if hosts else "⚪ ERR")
            namespace.name_hosts(ADDRESSES)
            stage.panel.click("🔄 Refresh")
            stage.wait_for_requests(5 if hosts else 2)
            stage.panel.wait_for_title("🟢 12,345")
        expect(program.output, "", "What was written")


def a_proxy_sees_ciphertext_alone(stage):
    with Proxy(PROXY) as proxy:
        with start_and_settle(stage, https_proxy=proxy.origin):
            pass
    expect(stage.targets(), START, "Requests")
    expect(sorted(head.splitlines()[0] for head in proxy.heads),
           [f"CONNECT {GRAPH}:443 HTTP/1.1", f"CONNECT {WEBSITE}:443 HTTP/1.1"], "What the proxy was asked for")
    expect(len(proxy.seen) > 1000, True, "Whether the transfers went through the proxy")
    expect([word for word in (TOKEN, ACCOUNT) if word in "".join(proxy.heads) or word.encode() in proxy.seen], [],
           "What the proxy has learnt")


def a_proxy_that_does_not_help_is_told(stage):
    with Proxy(PROXY, refused("407 Authenticate", 'Proxy-Authenticate: Basic realm="x"')) as proxy:
        fails(stage, "The proxy server asks for a password.", requests=[], https_proxy=proxy.origin)
    unreached = "The server could not be reached through the proxy server."
    for refusal in (refused("403 Forbidden"), refused("404 Not found"), refused("503 Unavailable"), "garbage\r\n\r\n"):
        with Proxy(PROXY, refusal) as proxy:
            fails(stage, unreached, requests=[], https_proxy=proxy.origin)
    fails(stage, unreached, requests=[], https_proxy=proxy.origin)  # which has gone
    fails(stage, unreached, requests=[], https_proxy="http://nowhere.invalid:3128")


def a_proxy_configuration_out_of_reach_is_done_without(stage):
    with start_and_settle(stage, https_proxy="pac+http://127.0.0.97:80/proxy.pac"):  # where nobody listens
        pass
    expect(stage.targets(), START, "Requests")


def a_proxy_script_is_not_told_the_token(stage):
    """It sends whatever has more than the host's name in it through a proxy of its own."""
    script = f"""function FindProxyForURL(url, host) {{
        return /^https:..[a-z.]+(:443)?.?$/.test(url) ? "PROXY {PROXY[0]}:{PROXY[1]}" : "PROXY 127.0.0.96:3128";
    }}"""
    with Script(("127.0.0.97", 80), script) as server, Proxy(PROXY) as proxy, Proxy(("127.0.0.96", 3128)) as told:
        if not runs_proxy_scripts(server.address):
            print("    (NOT RUN: this system's libproxy runs no scripts)")
            return
        with start_and_settle(stage, https_proxy=server.address):
            pass
        expect(told.heads, [], "What went by the way of those who know more than a host's name")
        expect(len(proxy.heads), 2, "Tunnels of those who know no more")
    expect(stage.targets(), START, "Requests")


def a_network_without_a_way_to_the_service_is_told(stage):
    namespace.name_hosts({**ADDRESSES, GRAPH: "2001:db8::1"})
    fails(stage, "The network is not reachable.", requests=[FEED])
    namespace.name_hosts(ADDRESSES)


def error_rows_for(words):
    return error_rows(f"Network error: {words}"[:60])


def moved(target):
    """The path of the same figures at another host."""
    return f"/insights/date_preset={'today' if 'date_preset=today' in target else 'last_7d'}"


PROXY = ("127.0.0.98", 3128)
V6, DEAD_V4 = "::1", "127.0.0.95"

# Runs the program that follows with a pipe for standard output that has no other end.
WITHOUT_READER = """
import os, signal, sys
reader, writer = os.pipe()
os.close(reader)
os.dup2(writer, 1)
signal.signal(signal.SIGPIPE, signal.SIG_DFL)
os.execv(sys.argv[1], sys.argv[1:])
"""


def runs_proxy_scripts(address):
    """Whether the system's library for proxies asks the script at the address."""
    ask = """
import ctypes
library = ctypes.CDLL("libproxy.so.1")
library.px_proxy_factory_new.restype = ctypes.c_void_p
library.px_proxy_factory_get_proxies.restype = ctypes.POINTER(ctypes.c_char_p)
library.px_proxy_factory_get_proxies.argtypes = [ctypes.c_void_p, ctypes.c_char_p]
print(library.px_proxy_factory_get_proxies(library.px_proxy_factory_new(), b"https://a.example/")[0].decode())
"""
    answer = subprocess.run([sys.executable, "-c", ask], env={"PATH": "/usr/bin:/bin", "https_proxy": address},
                            capture_output=True, text=True, check=True)
    return not answer.stdout.startswith("direct")


def redirect(address):
    return lambda request: Reply(b"", 302, {"Location": address})


def refused(status, *headers):
    return "\r\n".join([f"HTTP/1.1 {status}", "Content-Length: 0", *headers, "", ""])


def fails(stage, words, requests, **environment):
    with stage.start(**environment) as program:
        stage.panel.wait_for_title("⚪ ERR")
        stage.wait_for_requests(len(requests))
        stage.panel.wait_for_rows(error_rows_for(words))
    expect(stage.targets(), requests, "Requests")
    expect(TOKEN in program.output, False, "Whether the token was written")
    expect("//" in program.output, False, "Whether an address was written")


STEPS = [
    a_certificate_that_does_not_fit_gets_no_request,
    tls_1_2_is_enough,
    a_redirect_takes_the_token_nowhere,
    a_redirect_away_from_tls_is_not_followed,
    endless_redirects_end,
    a_service_on_ipv6_alone_is_reached,
    a_family_of_addresses_that_is_dead_holds_nothing_up,
    a_first_transfer_that_breaks_off_is_told_at_once_with_two_families_of_addresses,
    what_comes_before_an_answer_does_not_shift_the_answers,
    a_standard_output_that_nobody_reads_ends_nothing,
    a_proxy_sees_ciphertext_alone,
    a_proxy_that_does_not_help_is_told,
    a_proxy_configuration_out_of_reach_is_done_without,
    a_proxy_script_is_not_told_the_token,
    a_network_without_a_way_to_the_service_is_told,
]


sys.exit(run(STEPS))
