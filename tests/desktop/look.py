# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""How a desktop looks: dark or light, twice as large, from right to left."""

import subprocess
from dataclasses import dataclass

import namespace
from events import Failure


@dataclass
class Look:
    dark: bool | None = None  # None: as the desktop has it by itself
    scale: int = 1
    right_to_left: bool = False

    @classmethod
    def of_words(cls, words):
        known = {"dark": {"dark": True}, "light": {"dark": False}, "200%": {"scale": 2}, "rtl": {"right_to_left": True}}
        return cls(**{key: value for word in words for key, value in known[word].items()})

    def program(self, binary):
        """The program, as if a plug-in of the desktop had brought Qt's own Hebrew translation."""
        if not self.right_to_left:
            return binary
        wrapper = namespace.private_folder("reversed") / "vantelo"
        wrapper.write_text(f"#!/bin/sh\nexec {binary} -reverse\n")
        wrapper.chmod(0o755)
        return wrapper

    def environment(self):
        """What the whole session is told. How a panel becomes dark or light is the host's own business."""
        environment = {}
        if self.dark is not None:
            environment["GTK_THEME"] = "Adwaita:dark" if self.dark else "Adwaita"
        return environment | (_hebrew(namespace.private_folder("locale")) if self.right_to_left else {})


def _hebrew(folder):
    made = subprocess.run(["localedef", "-i", "he_IL", "-f", "UTF-8", folder / "he_IL.UTF-8"], capture_output=True)
    if made.returncode:
        raise Failure(f"No Hebrew locale can be made here: {made.stderr.decode()}")
    return {"LOCPATH": str(folder), "LANG": "he_IL.UTF-8", "LANGUAGE": "he"}
