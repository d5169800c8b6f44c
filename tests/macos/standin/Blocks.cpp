// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Blocks.h"

#include <cstdlib>
#include <cstring>

// What the compiler makes of ^{ … }; ObjFW's runtime leaves the rest to a library that Debian builds without.
namespace {

struct Descriptor {
    unsigned long reserved;
    unsigned long size;
    void (*copy)(void *to, const void *from);
    void (*dispose)(const void *block);
};

struct Block {
    void *kind;
    unsigned int flags;
    int reserved;
    void (*invoke)();
    const Descriptor *descriptor;
};

constexpr unsigned int hasCopyAndDispose = 1u << 25u;

} // namespace

// Where a block lies. Nothing here asks.
extern "C" {
void *_NSConcreteStackBlock[32];
void *_NSConcreteGlobalBlock[32];
}

void *_Block_copy(const void *block)
{
    const auto *const from = static_cast<const Block *>(block);
    void *const copy = std::malloc(from->descriptor->size);
    std::memcpy(copy, from, from->descriptor->size);
    if ((from->flags & hasCopyAndDispose) != 0)
        from->descriptor->copy(copy, from);
    return copy;
}

void _Block_release(const void *block)
{
    const auto *const from = static_cast<const Block *>(block);
    if ((from->flags & hasCopyAndDispose) != 0)
        from->descriptor->dispose(block);
    std::free(const_cast<void *>(block));
}
