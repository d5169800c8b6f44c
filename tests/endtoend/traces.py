# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Searching for a secret in whatever shape it may have leaked, and for files that are open to others."""

import base64
import re
import stat

from events import Failure

PIECE = 12  # characters; texts are cut on screen, so that a part may leak alone


def shapes(secret):
    """The secret's pieces, plain and as programs encode them."""
    for start in range(0, len(secret) - PIECE + 1, PIECE // 2):
        piece = secret[start:start + PIECE].encode()
        yield piece
        yield piece.decode().encode("utf-16-le")
        yield piece.decode().encode("utf-16-be")
        yield piece.hex().encode()
        yield "".join(f"%{byte:02x}" for byte in piece).encode()
    for shift in range(3):  # where the secret stands in what is encoded
        encoded = base64.b64encode(bytes(shift) + secret.encode())[4:-4]
        for start in range(0, len(encoded) - 2 * PIECE + 1, PIECE):
            yield encoded[start:start + 2 * PIECE]


def expect_no_trace(secret, data, where):
    """Letters' case does not matter. The failure does not tell the secret."""
    lowered = data.lower()
    found = [shape for shape in shapes(secret) if shape.lower() in lowered]
    if found:
        raise Failure(f"A trace of the secret, {len(found[0])} bytes long, was found in {where}.")


class FileAudit:
    """Which files a program makes and with which permissions, from what strace writes down."""

    OPTIONS = ["-f", "-y", "-s", "300", "-e",
               "trace=umask,open,openat,creat,mkdir,mkdirat,chmod,fchmod,fchmodat,execve,mknod,mknodat"]

    def __init__(self, log):
        self._calls = _whole_lines(log.read_text(errors="replace").splitlines())

    def made(self, mask):
        """[(path, permissions)] of every file and folder made or given new ones, in order."""
        result, others, program = [], set(), None
        for process, call in self._calls:
            program = program or process
            if call.startswith("execve(") and process != program:
                others.add(process)  # a browser, which makes what it likes
            if process in others or not re.search(r"\) += [0-9]", call):
                continue
            if match := re.match(r"umask\((\d+)\)", call):
                mask = int(match[1], 8)
            elif match := re.match(r'(open|openat|creat)\(.*?"(.*?)", .*O_(?:CREAT|TMPFILE)\S*, (\d+)', call):
                result.append((match[2], int(match[3], 8) & ~mask))
            elif match := re.match(r'mkdir(?:at)?\(.*?"(.*?)", (\d+)', call):
                result.append((match[1], int(match[2], 8) & ~mask))
            elif match := re.match(r'(?:f?chmod(?:at)?)\((?:.*?"(.*?)"|\d+<(.*?)>), (\d+)', call):
                result.append((match[1] or match[2], int(match[3], 8)))
        return result


def open_to_others(permissions):
    return bool(permissions & (stat.S_IRWXG | stat.S_IRWXO))


def _whole_lines(lines):
    """(process, call) in the order in which the calls returned."""
    begun = {}
    for line in lines:
        process, _, call = line.partition(" ")
        call = call.strip()
        if call.endswith("<unfinished ...>"):
            begun[process] = call.removesuffix("<unfinished ...>")
            continue
        if match := re.match(r"<\.\.\. \w+ resumed>(.*)", call):
            call = begun.pop(process, "") + match[1]
        yield process, call
