# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""The preference file as other programs see it, and what they, the user and the disk do to it."""

import os
import re
import shutil
import subprocess
import time

LIST = ("a list",)  # how a value with a bare comma reads: of no kind that anybody asks for


class PreferenceFile:
    def __init__(self, disk):
        """`disk` is the mount point of a small file system."""
        self._disk = disk
        self.folder = disk / "config" / "Vantelo"
        self.path = self.folder / "Vantelo Test.conf"
        self._lock = self.folder / "Vantelo Test.conf.lock"
        self._ballast = disk / "ballast"

    # Reading

    def values(self):
        """What a reader finds under [General]; lines that are none of an INI file mean nothing."""
        return parse(self.bytes())

    def bytes(self):
        return self.path.read_bytes() if self.path.is_file() else b""

    def is_damaged(self):
        """Whether some line is neither a preference nor a section, a comment or a blank."""
        section_is_whole = True
        for line in re.split(r"[\r\n]", self.bytes().decode("latin-1")):
            line = line.strip(" \t\r\n\f\v")
            if line.startswith("["):
                section_is_whole = bool(re.fullmatch(r"\[[\w.%-]+\]\s*(;.*)?", line, re.ASCII))
            if not line or line.startswith(";"):
                continue
            entry = re.match(r"[\w.%\\-]+[ \t]*=", line, re.ASCII)
            if not section_is_whole or not (entry or line.startswith("[")):
                return True
        return False

    def wider_than_the_user(self):
        """The paths that others could read or write."""
        return [str(path) for path in [self.folder, *self.folder.glob("*")] 
                if path.exists() and path.stat().st_mode & 0o077]

    def beside(self):
        """What a killed program left of its last write."""
        return [path.name for path in self.folder.glob("*") if path != self.path]

    def leave_over(self, ending, content):
        """Puts it there as a kill at the right moment would."""
        self.folder.mkdir(mode=0o700, parents=True, exist_ok=True)
        self.path.with_name(self.path.name + ending).write_bytes(content)
        self.path.with_name(self.path.name + ending).chmod(0o600)

    def let_time_pass(self):
        """Nobody starts a program again within the half second in which an empty lock may be one that is being made."""
        if self._lock.exists():
            os.utime(self._lock, (time.time() - 1, time.time() - 1))

    # Writing

    def write(self, content):
        self.folder.mkdir(mode=0o700, parents=True, exist_ok=True)
        self.path.write_bytes(content)
        self.path.chmod(0o600)

    def write_values(self, values):
        self.write(b"[General]\n" + b"".join(_line(key, value) for key, value in sorted(values.items())))

    def truncate(self, length):
        self.write(self.bytes()[:length])

    def remove(self):
        self.path.unlink(missing_ok=True)

    def remove_folder(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def put_folder_in_place(self):
        self.remove()
        self.path.mkdir(mode=0o700)

    def remove_folder_in_place(self):
        self.path.rmdir()

    def set_mode(self, mode):
        self.path.chmod(mode)

    def set_folder_mode(self, mode):
        self.folder.chmod(mode)

    def fill_disk(self):
        with open(self._ballast, "wb", buffering=0) as ballast:
            try:
                while True:
                    ballast.write(b"\0" * 4096)
            except OSError:
                pass

    def free_disk(self):
        self._ballast.unlink()


def mount_small_disk(folder):
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=128k,mode=0700", "none", str(folder)], check=True)


def parse(content):
    values, section = {}, "General"
    for line in content.decode("latin-1").splitlines():
        line = line.strip()
        if line.startswith("["):
            section = line[1:].split("]")[0]
        elif "=" in line and not line.startswith(";") and section == "General":
            key, value = line.split("=", 1)
            values[key.strip()] = _value(value.strip())
    return values


def _value(text):
    if text.startswith('"'):
        return re.sub(r"\\(.)", r"\1", text[1:].split('"')[0])
    return LIST if "," in text else text


def _line(key, value):
    text = "1, 2" if value == LIST else value if value.strip() == value else f'"{value}"'
    return f"{key}={text}\n".encode("latin-1")
