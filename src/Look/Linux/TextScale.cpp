// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Look/TextScale.h"

double textScale(TextStyle style)
{
    switch (style) {
    case TextStyle::Title:
        return 1.7;
    case TextStyle::Title2:
        return 1.35;
    case TextStyle::Headline:
    case TextStyle::Body:
        return 1.0;
    case TextStyle::Subheadline:
        return 0.95;
    case TextStyle::Caption:
        return 0.9;
    case TextStyle::Caption2:
        return 0.85;
    }
    return 1.0;
}
