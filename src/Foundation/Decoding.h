// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QCoroFuture>
#include <QCoroTask>
#include <QtConcurrentRun>

#include <type_traits>

/// Bytes up to which a body is decoded in passing: that takes less than a millisecond, and a thread for it more. The
/// service's own bodies have one or two thousand.
inline constexpr qsizetype smallBody = qsizetype{16} * 1024;

/// Applies a function that decodes to a whole body; a large one on another thread, so that the menu does not stall.
template <class Decode>
QCoro::Task<std::invoke_result_t<Decode, QByteArray>> decoded(QByteArray body, Decode decode)
{
    if (body.size() <= smallBody)
        co_return decode(body);
    co_return co_await QtConcurrent::run(decode, body);
}
