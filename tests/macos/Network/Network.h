// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// What the program uses of the framework Network and of libdispatch, all of macOS 10.14 or older.
#pragma once

#import <Foundation/Foundation.h>

@protocol OS_dispatch_queue <NSObject>
@end
@protocol OS_nw_path <NSObject>
@end
@protocol OS_nw_path_monitor <NSObject>
@end

typedef NSObject<OS_dispatch_queue> *dispatch_queue_t;
typedef NSObject<OS_nw_path> *nw_path_t;
typedef NSObject<OS_nw_path_monitor> *nw_path_monitor_t;
typedef void (^nw_path_monitor_update_handler_t)(nw_path_t path);
typedef enum { nw_path_status_invalid = 0, nw_path_status_satisfied = 1 } nw_path_status_t;

extern "C" {
dispatch_queue_t dispatch_get_main_queue(void);
nw_path_status_t nw_path_get_status(nw_path_t path);
nw_path_monitor_t nw_path_monitor_create(void);
void nw_path_monitor_set_queue(nw_path_monitor_t monitor, dispatch_queue_t queue);
void nw_path_monitor_set_update_handler(nw_path_monitor_t monitor, nw_path_monitor_update_handler_t handler);
void nw_path_monitor_start(nw_path_monitor_t monitor);
void nw_path_monitor_cancel(nw_path_monitor_t monitor);
}
