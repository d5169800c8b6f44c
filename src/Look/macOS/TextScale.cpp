// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/TextScale.h"

// The points that the system gives each style, beside the 13 of its font.
double textScale(TextStyle style)
{
    switch (style) {
    case TextStyle::Title:
        return 22.0 / 13.0;
    case TextStyle::Title2:
        return 17.0 / 13.0;
    case TextStyle::Headline:
    case TextStyle::Body:
        return 1.0;
    case TextStyle::Subheadline:
        return 11.0 / 13.0;
    case TextStyle::Caption:
        return 10.0 / 13.0;
    case TextStyle::Caption2:
        return 10.0 / 13.0;
    }
    return 1.0;
}
