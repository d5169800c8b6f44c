// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>

/// An X server of this process's own, without a window manager, while the object lives. Make it before the
/// application object.
class TestDisplay {
public:
    TestDisplay();
    TestDisplay(const TestDisplay &) = delete;
    TestDisplay &operator=(const TestDisplay &) = delete;
    ~TestDisplay();

private:
    QProcess m_server;
};
