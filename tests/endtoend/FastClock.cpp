// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Loaded into the program before its libraries: the clocks that the program itself reads, and the kernel's timers that
// it sets by them, run faster by the factor that FAST_CLOCK names. Its libraries keep the real time, so that transfers
// are given theirs.

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <link.h>
#include <sys/timerfd.h>

namespace {

constexpr std::int64_t second = 1'000'000'000;

std::int64_t factor()
{
    static const std::int64_t factor = [] {
        const char *const text = std::getenv("FAST_CLOCK");
        return text != nullptr ? std::atoll(text) : 1;
    }();
    return factor;
}

template <class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

std::int64_t nanoseconds(const timespec &time) { return time.tv_sec * second + time.tv_nsec; }

timespec from(std::int64_t nanoseconds) { return {.tv_sec = nanoseconds / second, .tv_nsec = nanoseconds % second}; }

int realTime(clockid_t clock, timespec *time)
{
    static const auto real = next<int (*)(clockid_t, timespec *)>("clock_gettime");
    return real(clock, time);
}

/// When the clock began to run fast.
std::int64_t beginning(clockid_t clock)
{
    static const auto now = [](clockid_t which) {
        timespec time{};
        realTime(which, &time);
        return nanoseconds(time);
    };
    static const std::int64_t boot = now(CLOCK_BOOTTIME);
    static const std::int64_t awake = now(CLOCK_MONOTONIC);
    return clock == CLOCK_BOOTTIME ? boot : awake;
}

/// Whether this address of code is the program's own; it comes first among what is loaded.
bool isOfTheProgram(const void *code)
{
    const auto look = [](dl_phdr_info *loaded, std::size_t, void *wanted) {
        const auto address = reinterpret_cast<ElfW(Addr)>(wanted);
        for (int i = 0; i < loaded->dlpi_phnum; ++i) {
            const ElfW(Phdr) &part = loaded->dlpi_phdr[i];
            if (address - loaded->dlpi_addr - part.p_vaddr < part.p_memsz && part.p_type == PT_LOAD)
                return 1;
        }
        return 2;
    };
    return ::dl_iterate_phdr(look, const_cast<void *>(code)) == 1;
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    const int result = realTime(clock, time);
    if ((clock == CLOCK_BOOTTIME || clock == CLOCK_MONOTONIC) && isOfTheProgram(__builtin_return_address(0)))
        *time = from(beginning(clock) + (nanoseconds(*time) - beginning(clock)) * factor());
    return result;
}

int timerfd_settime(int timer, int flags, const itimerspec *time, itimerspec *before) noexcept
{
    static const auto real = next<int (*)(int, int, const itimerspec *, itimerspec *)>("timerfd_settime");
    itimerspec sooner = *time;
    if (flags == TFD_TIMER_ABSTIME)
        sooner.it_value =
            from(beginning(CLOCK_BOOTTIME) + (nanoseconds(time->it_value) - beginning(CLOCK_BOOTTIME)) / factor());
    return real(timer, flags, &sooner, before);
}
}
