// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "TestPreferences.h"

#include "Preferences/PreferenceStorage.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

void forgetAll() { QProcess::execute(u"/usr/bin/defaults"_s, {u"delete"_s, u"app.vantelo.Vantelo Test"_s}); }

} // namespace

TestPreferences::TestPreferences() { forgetAll(); }

TestPreferences::~TestPreferences() { forgetAll(); }

void TestPreferences::write(const QString &key, const QVariant &value) const
{
    const auto domain = PreferenceStorage::open();
    domain->setValue(key, value);
    domain->sync();
}

QVariant TestPreferences::stored(const QString &key) const
{
    const auto domain = PreferenceStorage::open();
    domain->sync();
    return domain->value(key);
}
