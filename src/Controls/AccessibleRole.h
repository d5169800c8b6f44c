// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>

class QWidget;

/// What a widget is to a screen reader, where Qt cannot know.
namespace AccessibleRole {

/// Lets the widget stand under this role: with its accessible name, or the text it shows, as its name, and
/// pressed by screen readers if it is a button. To be called in the widget's constructor.
void give(QWidget *widget, QAccessible::Role role);

} // namespace AccessibleRole
