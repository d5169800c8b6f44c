// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "API/FormatNumber.h"

#include <QLocale>

QString formatNumber(std::int64_t number)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(qlonglong{number});
}
