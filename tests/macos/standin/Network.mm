// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Blocks.h"
#include "StandIn.h"

#include <Network/Network.h>

#include <QList>

#include <memory>
#include <utility>

struct nw_path {
    bool online;
    bool lookedAt = false;
};

struct nw_path_monitor {
    dispatch_queue_t queue = nullptr;
    std::shared_ptr<const void> handler;
    bool started = false;
};

namespace {

QList<nw_path_monitor_t> monitors;

/// What waits to be called on the main queue.
struct Update {
    std::shared_ptr<const void> handler;
    nw_path path;
};
QList<Update> updates;

} // namespace

dispatch_queue_t dispatch_get_main_queue(void)
{
    static char queue = 0;
    return reinterpret_cast<dispatch_queue_t>(&queue);
}

nw_path_status_t nw_path_get_status(nw_path_t path)
{
    path->lookedAt = true;
    return path->online ? nw_path_status_satisfied : nw_path_status_unsatisfied;
}

nw_path_monitor_t nw_path_monitor_create(void) { return monitors.emplace_back(new nw_path_monitor); }

void nw_path_monitor_set_queue(nw_path_monitor_t monitor, dispatch_queue_t queue) { monitor->queue = queue; }

void nw_path_monitor_set_update_handler(nw_path_monitor_t monitor, nw_path_monitor_update_handler_t handler)
{
    monitor->handler.reset(
        static_cast<const void *>(_Block_copy(reinterpret_cast<const void *>(handler))), _Block_release);
}

void nw_path_monitor_start(nw_path_monitor_t monitor) { monitor->started = true; }

void nw_path_monitor_cancel(nw_path_monitor_t monitor) { monitor->started = false; }

void nw_release(void *object)
{
    auto *const monitor = static_cast<nw_path_monitor_t>(object);
    if (monitor->started)
        qFatal("a monitor that was not cancelled goes on");
    monitors.removeOne(monitor);
    delete monitor;
}

void AppKit::tellPath(bool online)
{
    for (nw_path_monitor_t monitor : std::as_const(monitors)) {
        if (monitor->started && monitor->queue == dispatch_get_main_queue())
            updates << Update{monitor->handler, {online}};
    }
}

int AppKit::serveMainQueue()
{
    int lookedAt = 0;
    for (Update &update : std::exchange(updates, {})) {
        const auto handler =
            reinterpret_cast<nw_path_monitor_update_handler_t>(const_cast<void *>(update.handler.get()));
        handler(&update.path);
        lookedAt += update.path.lookedAt ? 1 : 0;
    }
    return lookedAt;
}

qsizetype AppKit::pathMonitors() { return monitors.size(); }
