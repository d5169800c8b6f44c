// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Machine/OnlineWatch.h"

#include <QPointer>

#include <Network/Network.h>

namespace {

/// Asks the system for the way that a connection would take.
class PathWatch : public OnlineWatch {
public:
    PathWatch()
    {
        const QPointer<PathWatch> self(this); // an update may already be on its way when this goes
        nw_path_monitor_set_queue(m_monitor, dispatch_get_main_queue());
        nw_path_monitor_set_update_handler(m_monitor, ^(nw_path_t path) {
          if (self && nw_path_get_status(path) == nw_path_status_satisfied)
              Q_EMIT self->online();
        });
        nw_path_monitor_start(m_monitor);
    }

    ~PathWatch() override
    {
        nw_path_monitor_cancel(m_monitor);
        nw_release(m_monitor);
    }

    Q_DISABLE_COPY_MOVE(PathWatch)

private:
    const nw_path_monitor_t m_monitor = nw_path_monitor_create();
};

} // namespace

std::unique_ptr<OnlineWatch> OnlineWatch::create() { return std::make_unique<PathWatch>(); }
