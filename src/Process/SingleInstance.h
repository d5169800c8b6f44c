// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

/// The claim of this process to be the only one of its kind in the user's session. It lasts as long as the
/// object; the system gives it back when the process dies.
class SingleInstance {
public:
    /// Claims the place. Nothing where another process holds it: that one has then been asked to come to the
    /// front, and the caller should end.
    static std::unique_ptr<SingleInstance> claim();

    SingleInstance() = default;
    virtual ~SingleInstance() = default;
    Q_DISABLE_COPY_MOVE(SingleInstance)

    /// Called, on the main thread, whenever a later process finds the place taken.
    virtual void onActivation(std::function<void()> activate) = 0;
};
