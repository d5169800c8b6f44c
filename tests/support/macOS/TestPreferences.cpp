// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestPreferences.h"

#include "Foundation/Deployment.h"

#include <QSettings>

using namespace Qt::StringLiterals;

namespace {

// The domain of the test programs; here the system alone knows in which file it is kept.
QSettings domain() { return {QSettings::NativeFormat, QSettings::UserScope, u"vantelo.app"_s, Deployment::domain()}; }

} // namespace

TestPreferences::TestPreferences() { domain().clear(); }

TestPreferences::~TestPreferences() { domain().clear(); }

void TestPreferences::write(const QString &key, const QVariant &value) const { domain().setValue(key, value); }

QVariant TestPreferences::stored(const QString &key) const { return domain().value(key); }
