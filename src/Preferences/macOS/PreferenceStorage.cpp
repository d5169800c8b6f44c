// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Preferences/PreferenceStorage.h"

#include "Foundation/Deployment.h"

#include <QSettings>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The system itself writes the file, with its types, and for the user alone.
class PreferenceDomain : public PreferenceStorage {
public:
    // Without this a key that is absent would be looked for in places shared with others.
    PreferenceDomain() { m_settings.setFallbacksEnabled(false); }

    QVariant value(const QString &key) const override { return m_settings.value(key); }
    void setValue(const QString &key, const QVariant &value) override { m_settings.setValue(key, value); }

    Outcome sync() override
    {
        m_settings.sync();
        return m_settings.status() == QSettings::AccessError ? Outcome::Failed : Outcome::Done;
    }

    /// The system tells nobody, so it is looked for.
    std::unique_ptr<QObject> watch(std::function<void()> changed) const override
    {
        auto timer = std::make_unique<QTimer>();
        timer->callOnTimeout(std::move(changed));
        timer->start(2s);
        return timer;
    }

private:
    // Qt names the domain by an address, read backwards, and the application.
    QSettings m_settings{QSettings::NativeFormat, QSettings::UserScope, u"vantelo.app"_s, Deployment::domain()};
};

} // namespace

std::unique_ptr<PreferenceStorage> PreferenceStorage::open() { return std::make_unique<PreferenceDomain>(); }
