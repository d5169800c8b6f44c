// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What the program uses of the framework Network and of libdispatch, all of macOS 10.14 or older, as C++ sees it.
#pragma once

typedef struct dispatch_queue_s *dispatch_queue_t;
typedef struct nw_path *nw_path_t;
typedef struct nw_path_monitor *nw_path_monitor_t;
typedef void (^nw_path_monitor_update_handler_t)(nw_path_t path);
typedef enum {
    nw_path_status_invalid = 0,
    nw_path_status_satisfied = 1,
    nw_path_status_unsatisfied = 2
} nw_path_status_t;

extern "C" {
dispatch_queue_t dispatch_get_main_queue(void);
nw_path_status_t nw_path_get_status(nw_path_t path);
nw_path_monitor_t nw_path_monitor_create(void);
void nw_path_monitor_set_queue(nw_path_monitor_t monitor, dispatch_queue_t queue);
void nw_path_monitor_set_update_handler(nw_path_monitor_t monitor, nw_path_monitor_update_handler_t handler);
void nw_path_monitor_start(nw_path_monitor_t monitor);
void nw_path_monitor_cancel(nw_path_monitor_t monitor);
void nw_release(void *object);
}
