// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoroTask>
#include <QStringList>

/// A modal question or message to the user, in plain text.
struct Alert {
    enum class Style { Informational, Warning };

    QString messageText;
    QString informativeText;
    Style style = Style::Informational;
    QStringList buttons; ///< in order; the first is the default one

    /// Shows the alert, application-modal, and gives the index of the button that the user pressed, or the
    /// last one's when the alert was closed otherwise. The event loop goes on meanwhile.
    static QCoro::Task<qsizetype> runModal(Alert alert);

    /// Closes every open alert as the user would.
    static void dismissAll();
};
