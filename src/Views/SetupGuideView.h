// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScrollArea>

/// The page that tells step by step how to get the two credentials. It has no state; its only actions are links.
class SetupGuideView : public QScrollArea {
    Q_OBJECT

public:
    SetupGuideView();
};
