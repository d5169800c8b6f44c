// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Foundation/Task.h"

namespace {

int runningTasks = 0; // main thread only, like every task's steps

QCoro::Task<> counted(QCoro::Task<> task)
{
    ++runningTasks;
    co_await task;
    --runningTasks;
}

} // namespace

void Task::start(QCoro::Task<> task) { counted(std::move(task)); }

int Task::running() { return runningTasks; }
