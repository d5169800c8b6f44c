# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""What befalls the preferences and the clock, by the user's hand, another program's or the disk's.

A mishap is a generator: it does its harm, yields while it lasts, and then mends what it broke. `year` gives it the
preference file, the model's store, the Settings form of the program, and dice.
"""

HOUR = 3600.0


def _edit(key, *values):
    """In Settings, and later once more so that things work again."""
    def happen(year):
        year.edit(key, year.dice.choice(values))
        yield
        year.mend()
    return happen


def _file(change):
    """By another program while this one runs; the user then sets things right in Settings or in the file."""
    def happen(year):
        change(year)
        year.store.replace(year.file)
        yield
        year.mend()
    return happen


def _state(harm, heal, writable=True):
    """A lasting obstacle. The file's values are the same before and after."""
    def happen(year):
        harm(year.file)
        year.store.writable = writable
        yield
        heal(year.file)
        year.store.writable = True
    return happen


def _unreadable(change):
    """What the program has read it keeps."""
    def happen(year):
        change(year)
        year.file.set_mode(0)
        year.store.readable = year.store.writable = False
        yield
        year.file.set_mode(0o600)
        year.store.readable = year.store.writable = True
    return happen


def _replace_unread(year):
    _other_account(year)
    year.store.replace(year.file)


def _folder_in_place(year):
    content = year.file.bytes()
    year.file.put_folder_in_place()
    year.store.replace(year.file)
    year.store.writable = False
    yield
    year.file.remove_folder_in_place()
    year.file.write(content)
    year.store.replace(year.file)
    year.store.writable = True


def _clock(seconds):
    def happen(year):
        year.now += seconds
        yield
        year.now -= seconds
    return happen


def _with(**values):
    return lambda year: year.file.write_values(year.file.values() | values)


def _without(*keys):
    return lambda year: year.file.write_values(
        {key: value for key, value in year.file.values().items() if key not in keys})


def _truncate(year):
    year.file.truncate(year.dice.randrange(len(year.file.bytes()) or 1))


def _other_account(year):
    year.file.write_values({"accessToken": year.token(), "adAccountId": "act_99", "staleThresholdMinutes": "20",
                            "lastImpressions": "100", "lastChangeTimestamp": repr(year.now - 1000), "own": "kept"})


MISHAPS = {
    "token edited": _edit("accessToken", "EAABanother"),
    "token cleared": _edit("accessToken", ""),
    "token a blank": _edit("accessToken", " "),
    "token with a blank": _edit("accessToken", "EAAB with a blank"),
    "account edited": _edit("adAccountId", "731731", "act_731731"),
    "account with a strange prefix": _edit("adAccountId", "ACT_5", "act5", "_act_5"),
    "account cleared": _edit("adAccountId", ""),
    "account with a blank": _edit("adAccountId", " ", "act_ 5"),
    "threshold at zero": _edit("staleThresholdMinutes", 0),
    "threshold negative": _edit("staleThresholdMinutes", -1, -10, -2**63),
    "threshold extreme": _edit("staleThresholdMinutes", 2**63 - 1, 525_600),
    "file replaced": _file(_other_account),
    "file truncated": _file(_truncate),
    "file cut to half": _file(lambda year: year.file.truncate(len(year.file.bytes()) // 2)),
    "file emptied": _file(lambda year: year.file.write(b"")),
    "file removed": _file(lambda year: year.file.remove()),
    "folder removed": _file(lambda year: year.file.remove_folder()),
    "file of no meaning": _file(lambda year: year.file.write(bytes(range(1, 61)) * 9)),
    "file in another form": _file(lambda year: year.file.write(b'{"accessToken": "lost"}\n')),
    "threshold in words": _file(_with(staleThresholdMinutes="soon")),
    "threshold a fraction": _file(_with(staleThresholdMinutes="20.5")),
    "threshold missing": _file(_without("staleThresholdMinutes")),
    "count in words": _file(_with(lastImpressions="many")),
    "count beyond 64 bits": _file(_with(lastImpressions="9223372036854775808")),
    "count the lowest": _file(_with(lastImpressions="-9223372036854775808")),
    "count the highest": _file(_with(lastImpressions="9223372036854775807")),
    "count a list": _file(_with(lastImpressions="1, 2")),
    "change time in words": _file(_with(lastChangeTimestamp="yesterday")),
    "change time with a comma": _file(_with(lastChangeTimestamp="1767225600,5")),
    "change time empty": _file(_with(lastChangeTimestamp="")),
    "change time zero": _file(_with(lastChangeTimestamp="0")),
    "change time negative": _file(_with(lastChangeTimestamp="-5.5")),
    "change time infinite": _file(_with(lastChangeTimestamp="inf")),
    "change time no number": _file(_with(lastChangeTimestamp="nan")),
    "change time to come": _file(_with(lastChangeTimestamp="4102444800")),
    "memory missing": _file(_without("lastImpressions", "lastChangeTimestamp")),
    "token a list": _file(_with(accessToken="EAAB,EAAB")),
    "account missing": _file(_without("adAccountId")),
    "file made unreadable": _unreadable(lambda year: None),
    "unreadable file in its place": _unreadable(_replace_unread),
    "file readable only": _state(lambda file: file.set_mode(0o400), lambda file: file.set_mode(0o600), writable=False),
    "folder closed for writing": _state(lambda file: file.set_folder_mode(0o500),
                                        lambda file: file.set_folder_mode(0o700), writable=False),
    "folder in place of the file": _folder_in_place,
    "disk full": _state(lambda file: file.fill_disk(), lambda file: file.free_disk(), writable=False),
    "file open to everyone": _state(lambda file: file.set_mode(0o666), lambda file: None),
    "folder open to everyone": _state(lambda file: file.set_folder_mode(0o777), lambda file: None),
    "clock put back": _clock(-2 * HOUR),
    "clock put forward": _clock(2 * HOUR),
}
