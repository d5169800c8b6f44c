// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

typedef struct objc_method *Method;
typedef struct objc_ivar *Ivar;
