#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""A product is not built for a web site that is no https origin: the update check would trust it."""

import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]


def configure(website):
    with tempfile.TemporaryDirectory() as build:
        # A compiler that does not exist, so that what is accepted goes no further than that.
        return subprocess.run(["cmake", "-S", PROJECT, "-B", build, f"-DVANTELO_WEBSITE={website}"],
                              env={"PATH": "/usr/bin:/bin", "CXX": "/nowhere/c++"}, capture_output=True, text=True)


class WebsiteTest(unittest.TestCase):
    def test_what_is_no_https_origin_stops_the_build(self):
        for website in ("", "http://site.example", "site.example", "https://", "https://site.example/",
                        "https://site.example/path", "https://site.example?x", "https://user@site.example",
                        "https://site example", "ftp://site.example", "https://site.example:x"):
            with self.subTest(website):
                made = configure(website)
                self.assertNotEqual(made.returncode, 0)
                self.assertIn("VANTELO_WEBSITE must be an https origin", " ".join(made.stderr.split()))

    def test_an_https_origin_is_taken(self):
        for website in ("https://site.example", "https://localhost:8443", "https://www.site-2.example"):
            with self.subTest(website):
                self.assertNotIn("VANTELO_WEBSITE", configure(website).stderr)


if __name__ == "__main__":
    unittest.main()
