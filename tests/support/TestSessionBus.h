// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// A session bus of this process's own while the object lives, so that no test ever touches the user's. Make it
/// before the application object. Nothing can be started through it.
class TestSessionBus {
public:
    enum class Names { Free, Refused };

    explicit TestSessionBus(Names names = Names::Free);
    TestSessionBus(const TestSessionBus &) = delete;
    TestSessionBus &operator=(const TestSessionBus &) = delete;
    ~TestSessionBus();

private:
    QTemporaryDir m_directory;
    QProcess m_daemon;
};
