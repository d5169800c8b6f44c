// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Loaded into the program before its libraries: the machine seems to have slept for as many seconds as stand in the
// file that ASLEEP names, eight bytes. The kernel's timers stay as they are.

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

const volatile std::int64_t *mapped()
{
    const char *const path = std::getenv("ASLEEP");
    const int file = path != nullptr ? ::open(path, O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0)
        std::abort();
    void *const memory = ::mmap(nullptr, sizeof(std::int64_t), PROT_READ, MAP_SHARED, file, 0);
    ::close(file);
    return static_cast<const volatile std::int64_t *>(memory);
}

std::int64_t secondsAsleep()
{
    static const volatile std::int64_t *const seconds = mapped();
    return *seconds;
}

template <class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    static const auto real = next<int (*)(clockid_t, timespec *)>("clock_gettime");
    const int result = real(clock, time);
    if (clock == CLOCK_BOOTTIME)
        time->tv_sec += secondsAsleep();
    return result;
}

int timerfd_settime(int timer, int flags, const itimerspec *time, itimerspec *before) noexcept
{
    static const auto real = next<int (*)(int, int, const itimerspec *, itimerspec *)>("timerfd_settime");
    itimerspec shifted = *time;
    if (flags == TFD_TIMER_ABSTIME)
        shifted.it_value.tv_sec -= secondsAsleep();
    return real(timer, flags, &shifted, before);
}
}
