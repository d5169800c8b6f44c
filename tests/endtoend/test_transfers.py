#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What lies between the program and the service: certificates, redirects, proxies, networks that come and go.

    test_transfers.py path/to/vantelo
"""

import contextlib
import socket
import ssl
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.append(str(Path(__file__).resolve().parents[1] / "support"))

import namespace
from events import Failure, expect, wait_until
from figures import delivering, error_rows
from proxy import Proxy
from scenario import ACCOUNT, FEED, START, TODAY, TOKEN, WEEK, run, start_and_settle
from stage import ADDRESSES, ELSEWHERE, GRAPH, WEBSITE
from tls_service import Reply, TlsService, limited_to, self_signed_context

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
    a_proxy_sees_ciphertext_alone,
    a_proxy_that_does_not_help_is_told,
    a_network_without_a_way_to_the_service_is_told,
]


sys.exit(run(STEPS))
