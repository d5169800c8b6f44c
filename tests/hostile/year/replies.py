# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Everything that the service may answer: what goes over the wire, and what of it arrives.

Bodies have the shapes that the Graph API has been seen to send; their words are this test's own.
"""

import gzip
import json
from dataclasses import dataclass

from model import Arrived, Failed

LOST = Failed("The connection was lost.")
REFUSED = Failed("The server refused the connection.")
TIMED_OUT = Failed("The request timed out.")
UNREADABLE = Failed("The server’s reply could not be read.")
TOO_LARGE = Failed("The server’s reply is too large.")

KEEP, CLOSE, RESET, SILENCE, REFUSE = "keep", "close", "reset", "silence", "refuse"
BODY_LIMIT = 16 * 1024 * 1024


@dataclass
class Reply:
    kind: str
    wire: bytes
    then: str
    outcome: object  # Arrived or Failed


def clean(row, random):
    body = json.dumps({"data": [row], "paging": {"cursors": {"before": "QUFB", "after": "QUFB"}}})
    return _whole("clean", body.encode(), random)


def clean_feed(random):
    version = random.choice(["1.0.0", "0.9.9", "1.0", "1.0.0-beta", "next"])
    return _whole("clean", _feed(version), random)


def faulty(kind, row, random):
    """A reply of one of KINDS in place of one with this row."""
    if kind in _TRANSPORT:
        body = json.dumps({"data": [row]}).encode()
        return Reply(kind, *_TRANSPORT[kind](body))
    if kind in ERRORS:
        status, body, headers = ERRORS[kind]
        return _whole(kind, body, random, status, headers)
    if kind in GARBAGE:
        status, body = GARBAGE[kind]
        return _whole(kind, body, random, status)
    if kind in FEEDS:
        return _whole(kind, FEEDS[kind], random)
    changes = ROWS.get(kind)
    body = BODIES[kind](row) if changes is None else {"data": [row | changes]}
    return _whole(kind, json.dumps(body).encode(), random)


def _whole(kind, body, random, status=200, headers=()):
    """A body that arrives whole, packed in one of the ways that servers have."""
    lines = ["Content-Type: " + random.choice(["application/json", "text/javascript; charset=UTF-8"]), *headers]
    sent = body
    if random.random() < 0.5:
        lines.append("Content-Encoding: gzip")
        sent = gzip.compress(body, 1)
    if random.random() < 0.5:
        lines.append("Transfer-Encoding: chunked")
        half = len(sent) // 2
        sent = _chunk(sent[:half]) + _chunk(sent[half:]) + b"0\r\n\r\n"
    else:
        lines.append(f"Content-Length: {len(sent)}")
    then = random.choice([KEEP, KEEP, KEEP, CLOSE])
    if then == CLOSE:
        lines.append("Connection: close")
    return Reply(kind, _head(status, lines) + sent, then, Arrived(body))


def _head(status, lines):
    return "\r\n".join([f"HTTP/1.1 {status} Said", *lines, "", ""]).encode()


def _chunk(data):
    return b"%x\r\n%s\r\n" % (len(data), data) if data else b""


def _compressed(packed):
    return _head(200, ["Content-Encoding: gzip", f"Content-Length: {len(packed)}"]) + packed


def _with_wrong_checksum(body):
    packed = bytearray(gzip.compress(body))
    packed[-6] ^= 0xff
    return bytes(packed)


_TRANSPORT = {
    "refused": lambda body: (b"", REFUSE, REFUSED),
    "reset": lambda body: (b"", RESET, LOST),
    "reset amid the body": lambda body: (_head(200, ["Content-Length: 9999"]) + body, RESET, LOST),
    "closed without a reply": lambda body: (b"", CLOSE, LOST),
    "silent": lambda body: (b"", SILENCE, TIMED_OUT),
    "silent after the head": lambda body: (_head(200, ["Content-Length: 9999"]), SILENCE, TIMED_OUT),
    "silent amid the body": lambda body: (_head(200, ["Content-Length: 9999"]) + body, SILENCE, TIMED_OUT),
    "cut short": lambda body: (_head(200, [f"Content-Length: {len(body) + 1}"]) + body, CLOSE, LOST),
    "cut short with an error status":
        lambda body: (_head(500, [f"Content-Length: {len(body) + 9}"]) + body, CLOSE, LOST),
    # Not here: chunks without a last one. Whether Qt notices is a matter of luck, and it may ask once more on its
    # own after the reply has ended.
    "broken compression": lambda body: (_compressed(_with_wrong_checksum(body)), CLOSE, UNREADABLE),
    # Qt does not miss the end of the compressed data, but half a document does not decode.
    "compression half the way": lambda body: (_compressed(gzip.compress(body)[:-12]), CLOSE, Arrived(body[:-1])),
    "not compressed as announced": lambda body: (_compressed(body), CLOSE, UNREADABLE),
    "oversized": lambda body: (_head(200, [f"Content-Length: {BODY_LIMIT + 1}"]) + body.ljust(BODY_LIMIT + 1),
                               CLOSE, TOO_LARGE),
    "oversized in chunks":
        lambda body: (_head(200, ["Transfer-Encoding: chunked"]) + _chunk(body.ljust(BODY_LIMIT + 1)) + b"0\r\n\r\n",
                      CLOSE, TOO_LARGE),
}


def _error(status, message, code, headers=(), **more):
    error = {"message": message, "type": "OAuthException", "code": code, "fbtrace_id": "BqX2s0wYh7"} | more
    return status, json.dumps({"error": error}).encode(), headers


_CHALLENGE = ('WWW-Authenticate: OAuth "Facebook Platform" "invalid_token" "The test takes this token back."',)

ERRORS = {
    "error: token refused": _error(400, "The token of this test is not valid.", 190, _CHALLENGE),
    "error: session ended": _error(400, "Describes what went wrong", 190, error_subcode=460,
                                   error_user_title="Heading", error_user_msg="Explanation"),
    "error: token refused with 401": _error(401, "This token is taken back.", 190, _CHALLENGE),
    "error: no permission": _error(403, "(#200) The test grants no ads_read & no \"ads_management\"", 200),
    "error: permissions missing": _error(400, "(#100) The test withholds a permission", 100),
    "error: user limit": _error(400, "(#17) Too many calls by this test's user", 17, is_transient=True),
    "error: application limit": _error(403, "(#4) Too many calls by this test's application", 4, is_transient=True),
    "error: business limit": _error(429, "(#80000) Too many calls for <this> account", 80000),
    "error: unknown": _error(500, "The test's service does not know why.", 1, is_transient=True),
    "error: unavailable": _error(503, "(#2) The test's service is away", 2, is_transient=True),
    "error: with status 200": _error(200, "Fehler in der Testabfrage – später nochmals", 2),
    "error: from a proxy": _error(407, "The test's proxy wants a word.", 1),
    "error: not found": _error(404, "(#803) The test knows no such account", 803),
    "error: empty message": _error(400, "", 190),
    "error: bare": (400, b'{"error": {}}', ()),
    "error: code alone": (400, b'{"error": {"code": 190}}', ()),
    "error: beside rows": (200, b'{"data": [{"impressions": "999999999"}], "error": {"message": "Half"}}', ()),
}

GARBAGE = {
    "a portal's page": (200, b"<!DOCTYPE html><html><body>Sign in to this network</body></html>"),
    "an error page": (500, b"<html><h1>500</h1></html>"),
    "a gateway's page": (502, b"<html><h1>502</h1></html>"),
    "no body": (200, b""),
    "no body with an error status": (500, b""),
    "blanks": (200, b" \r\n\t "),
    "bytes of no meaning": (200, bytes(range(255, -1, -1)) * 8),
    "half a document": (200, b'{"data": [{"impressions": "12'),
    "two documents": (200, b'{"data": []}{"data": []}'),
    "a list": (200, b'[{"impressions": "12"}]'),
    "a text": (200, b'"impressions"'),
    "a number": (200, b"12"),
    "null": (200, b"null"),
}

# The first row with these members instead of its own.
ROWS = {
    "impressions a number": {"impressions": 1234},
    "impressions a flag": {"impressions": True},
    "impressions an object": {"impressions": {"value": "12"}},
    "spend a number": {"spend": 12.5},
    "spend a list": {"spend": ["12.5"]},
    "clicks a number": {"inline_link_clicks": 5},
    "actions an object": {"actions": {"action_type": "lead", "value": "1"}},
    "actions a text": {"actions": "lead"},
    "an action's value a number": {"actions": [{"action_type": "lead", "value": 3}]},
    "an action's type a number": {"actions": [{"action_type": 3, "value": "3"}]},
    "an action null": {"actions": [None]},
    "an action a text": {"actions": ["lead"]},
    "impressions null": {"impressions": None},
    "everything null": {"impressions": None, "spend": None, "inline_link_clicks": None, "actions": None,
                        "cost_per_inline_link_click": None, "frequency": None, "reach": None},
    "impressions grouped": {"impressions": "1,234"},
    "impressions a fraction": {"impressions": "12.0"},
    "impressions after a blank": {"impressions": " 12"},
    "impressions with a plus": {"impressions": "+42"},
    "impressions negative": {"impressions": "-7"},
    "impressions empty": {"impressions": ""},
    "impressions the highest": {"impressions": "9223372036854775807"},
    "impressions the lowest": {"impressions": "-9223372036854775808"},
    "impressions too high": {"impressions": "9223372036854775808"},
    "impressions beyond a double": {"impressions": "9007199254740993"},
    "amounts with exponents": {"spend": "1e2", "cost_per_inline_link_click": "-1.5E-3", "frequency": "+.5"},
    "amounts hexadecimal": {"spend": "0x1.8p1", "cost_per_inline_link_click": "0XA"},
    "amounts infinite": {"spend": "inf", "cost_per_inline_link_click": "-Infinity", "frequency": "1e999"},
    "amounts not a number": {"spend": "nan", "cost_per_inline_link_click": "NaN"},
    "amounts with a comma": {"spend": "12,5", "cost_per_inline_link_click": "1.234,5"},
    "amounts with blanks": {"spend": " 12.5", "cost_per_inline_link_click": "12.5 "},
    "amounts in words": {"spend": "free", "cost_per_inline_link_click": "0x"},
    "actions of every kind": {"actions": [
        {"action_type": "purchase", "value": "3"}, {"action_type": "lead", "value": "2"},
        {"action_type": "complete_registration"}, {"value": "7"}, {"action_type": "purchase", "value": "4"},
        {"action_type": "purchase", "value": "2.5"}, {"action_type": "Purchase", "value": "90"},
        {"action_type": "page_engagement", "value": "50"}, {"action_type": None, "value": None}, {}]},
}

BODIES = {
    "an empty object": lambda row: {},
    "no rows": lambda row: {"data": []},
    "rows null": lambda row: {"data": None},
    "an empty row": lambda row: {"data": [{}]},
    "two rows": lambda row: {"data": [row, {"impressions": "5"}]},
    "nothing but strange keys": lambda row: {"Data": [row], "errors": {"message": "no"}},
    "error null": lambda row: {"data": [row], "error": None},
    "rows an object": lambda row: {"data": row},
    "rows a text": lambda row: {"data": "none"},
    "a row null": lambda row: {"data": [None]},
    "a row a text": lambda row: {"data": ["row"]},
    "a later row of a wrong kind": lambda row: {"data": [row, {"impressions": 5}]},
    "error a text": lambda row: {"error": "no"},
    "error a list": lambda row: {"error": []},
    "error's message a number": lambda row: {"error": {"message": 17}},
    "error's code a text": lambda row: {"error": {"message": "m", "code": "190"}},
    "error's code a fraction": lambda row: {"error": {"message": "m", "code": 190.5}},
    "error's code with a point": lambda row: {"error": {"message": "A code of 190.0", "code": 190.0}},
    "error's type a flag": lambda row: {"error": {"message": "m", "type": False}},
}


def _feed(version, **more):
    return json.dumps({"version": version, "download_url": "https://vantelo.example/", **more}).encode()


FEEDS = {
    "a newer release": _feed("1.10.0", release_notes="More & better"),
    "a much newer release": _feed("2"),
    "a feed without version": b'{"download_url": "https://vantelo.example/"}',
    "a feed without address": b'{"version": "9"}',
    "a feed of a wrong kind": b'{"version": 9, "download_url": "https://vantelo.example/"}',
}

INSIGHTS_KINDS = [*_TRANSPORT, *ERRORS, *GARBAGE, *ROWS, *BODIES]
# Those after which Qt asks for nothing again and whose end needs no clock.
SELF_CONTAINED_KINDS = ["broken compression", "oversized", *ERRORS, *GARBAGE, *ROWS, *BODIES]
FEED_KINDS = ["refused", "reset", "silent", "cut short", "an error page", "no body", "a list", *FEEDS]
