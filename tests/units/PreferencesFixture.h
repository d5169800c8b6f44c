// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "OutputCapture.h"
#include "Preferences/AppStorage.h"
#include "TestPreferences.h"

#include <QFile>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

/// A preference file of its own with a store on it, new for every test.
class PreferencesFixture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_preferences = std::make_unique<TestPreferences>();
        m_store = std::make_unique<DefaultsStore>();
    }

    void cleanup()
    {
        m_store.reset();
        m_preferences.reset();
    }

protected:
    QByteArray content() const
    {
        QFile file(m_preferences->fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    AppStorage<QString> text() { return {*m_store, u"text"_s, u"fallback"_s}; }
    AppStorage<std::int64_t> integer() { return {*m_store, u"integer"_s, 15}; }
    AppStorage<double> real() { return {*m_store, u"real"_s, 0.5}; }
    AppStorage<bool> flag() { return {*m_store, u"flag"_s, true}; }

    std::unique_ptr<TestPreferences> m_preferences;
    std::unique_ptr<DefaultsStore> m_store;
};
