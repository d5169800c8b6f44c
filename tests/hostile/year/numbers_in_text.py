# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Numbers as the service and the preference file write them: as text."""

import re

_WHOLE = re.compile(r"[+-]?[0-9]+", re.ASCII)
_DECIMAL = re.compile(r"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)(e[+-]?[0-9]+)?", re.ASCII | re.IGNORECASE)
_HEXADECIMAL = re.compile(r"[+-]?0x([0-9a-f]+\.?[0-9a-f]*|\.[0-9a-f]+)(p[+-]?[0-9]+)?", re.ASCII | re.IGNORECASE)
_SPECIAL = re.compile(r"[+-]?(inf|infinity|nan)", re.ASCII | re.IGNORECASE)


def whole_number(text):
    """A figure; whatever is no whole number of 64 bits counts as 0."""
    return integer_or_none(text) or 0


def amount(text):
    """A figure, read as C reads floating-point numbers; whatever is none counts as 0."""
    if text is None:
        return 0.0
    if _HEXADECIMAL.fullmatch(text):
        return float.fromhex(text)
    return real_or_none(text) or 0.0


def integer_or_none(text):
    if not isinstance(text, str) or not _WHOLE.fullmatch(text):
        return None
    number = int(text)
    return number if -2**63 <= number < 2**63 else None


def real_or_none(text):
    if not isinstance(text, str) or not (_DECIMAL.fullmatch(text) or _SPECIAL.fullmatch(text)):
        return None
    return float(text)
