// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

extern "C" {
const char *__lsan_default_suppressions();
const char *__lsan_default_options();
}

/// What the leak sanitizer is to pass over in every program that is built with it: leaks of the system's libraries,
/// each with its reason. Nothing of ours belongs here.
const char *__lsan_default_suppressions()
{
    // p11-kit, which Debian's libcurl loads, makes a locale as it is loaded and keeps it.
    return "leak:argz_add_sep\n";
}

const char *__lsan_default_options() { return "print_suppressions=0"; }
