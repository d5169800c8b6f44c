// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

/// A copy of a block that outlives the function it stands in; to be released once.
extern "C" void *_Block_copy(const void *block);
extern "C" void _Block_release(const void *block);
