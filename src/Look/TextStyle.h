// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>

/// The sizes and weights of all text in the program's windows, relative to the system font.
enum class TextStyle { Title, Title2, Headline, Subheadline, Body, Caption, Caption2 };

/// The font of a style as the system font is now.
QFont textFont(TextStyle style);

/// The same size in the system's fixed-width font, or in another one where that one is none.
QFont monospacedTextFont(TextStyle style);
