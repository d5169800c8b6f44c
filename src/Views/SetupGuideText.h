// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

/// What the guide says, in page order.
namespace SetupGuideText {

/// One line of a step: a text, or a link where there is an address.
struct StepItem {
    QString text;
    QString address;

    bool isLink() const { return !address.isEmpty(); }
};

struct Step {
    int number;
    QString title;
    QList<StepItem> items;
};

struct Box {
    QString title;
    QString message;
};

QString title();
QString subtitle();
Step createApp();
Step generateToken();
Box shortLivedToken();
Step longLivedToken();
QString exchangeCommand();
QString appSecretNote();
Step findAccountId();
QString pasteTitle();
QString pasteText();
Box permanentToken();

} // namespace SetupGuideText
