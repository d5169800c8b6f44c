// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/PreferenceStorage.h"

#include "Foundation/Deployment.h"
#include "Preferences/Linux/PreferenceFile.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

std::unique_ptr<PreferenceStorage> PreferenceStorage::open()
{
    return std::make_unique<PreferenceFile>(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                            u"/Vantelo/"_s + Deployment::domain() + u".conf"_s);
}
