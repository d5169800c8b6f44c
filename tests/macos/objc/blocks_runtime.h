// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// GNUstep's headers include this where blocks are allowed; the compiler needs none of it.
#pragma once
