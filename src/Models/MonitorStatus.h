// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <utility>
#include <variant>

/// The account's health as the program judges it. There is no comparison on purpose: whoever looks at a
/// status says what to do in every case, through match().
class MonitorStatus {
public:
    /// The last attempt to fetch today's figures failed.
    struct Error {
        QString message; ///< for the user, shown as it stands
    };
    /// The impression count rose recently enough, or no change time is known yet.
    struct Ok {};
    /// The impression count has not risen for longer than the threshold.
    struct Stale {};
    /// The access token or the ad account ID is empty.
    struct NoConfig {};

    static MonitorStatus error(QString message) { return {Error{std::move(message)}}; }
    static MonitorStatus ok() { return {Ok{}}; }
    static MonitorStatus stale() { return {Stale{}}; }
    static MonitorStatus noConfig() { return {NoConfig{}}; }

    /// Calls the handler of the present case and returns its result. A missing handler does not compile.
    template <class... Handlers>
    auto match(const Handlers &...handlers) const
    {
        return std::visit(Overloaded<Handlers...>{handlers...}, m_case);
    }

private:
    using Case = std::variant<Error, Ok, Stale, NoConfig>;
    template <class... Handlers>
    struct Overloaded : Handlers... {
        using Handlers::operator()...;
    };

    MonitorStatus(Case value) : m_case(std::move(value)) {}

    Case m_case;
};
