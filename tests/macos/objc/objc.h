// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// The compiler's own idea of an Objective-C runtime, in place of a runtime's header: GCC's does not know ARC.
#pragma once

#define __GNU_LIBOBJC__ 20110608 // makes GNUstep ask for <objc/runtime.h>

typedef signed char BOOL;
typedef id (*IMP)(id, SEL, ...);
#define YES static_cast<BOOL>(1)
#define NO static_cast<BOOL>(0)
#define nil nullptr
#define Nil nullptr
