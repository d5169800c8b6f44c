// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "MenuBar/Linux/BusMenu/BusText.h"

using namespace Qt::StringLiterals;

QString busText(QString text) { return text.replace(QChar::Null, QChar::ReplacementCharacter); }

QString menuLabel(const QString &text, Underscores underscores)
{
    QString label = busText(text);
    if (underscores == Underscores::EveryPair)
        return label.replace(u'_', u"__"_s);
    if (const qsizetype first = label.indexOf(u'_'); first >= 0)
        label.insert(first, u'_');
    return label;
}
