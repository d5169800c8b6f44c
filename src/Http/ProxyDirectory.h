// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFuture>
#include <QHash>

#include <chrono>

class QUrl;

/// Which proxy each server is reached through. The system is asked on a thread that nobody waits for, not even the end
/// of the process, and gets to know scheme, host and port alone: the rest of an address holds the access token.
class ProxyDirectory {
public:
    /// A question that stays unanswered for as long as this is asked once more, the next time after twice as long, and
    /// so on: each may hold its thread for ever, and still the answer may come one day.
    explicit ProxyDirectory(std::chrono::milliseconds patience = std::chrono::minutes(10)) : m_patience(patience) {}

    /// The proxy's address, empty for none, once the system has answered. One answer serves until it is forgotten.
    QFuture<QByteArray> proxyFor(const QUrl &address);

    /// Lets the system be asked anew.
    void forgetAnswers();

private:
    struct Question {
        QFuture<QByteArray> answer;
        std::chrono::milliseconds patience;
        QDeadlineTimer overdue;
    };

    std::chrono::milliseconds m_patience;
    QHash<QByteArray, Question> m_questions; // by server
};
