// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

/// How the system keeps the preferences of the program's own domain. Values are read from memory and set in memory;
/// sync() brings memory and disk together.
class PreferenceStorage {
public:
    enum class Outcome {
        Done,   ///< memory and disk say the same
        Busy,   ///< another program is writing; worth another try in a moment
        Failed, ///< what was set cannot be stored
    };

    static std::unique_ptr<PreferenceStorage> open();
    virtual ~PreferenceStorage() = default;

    /// A text, a number or a flag; invalid where the key is absent or its value is of another kind.
    virtual QVariant value(const QString &key) const = 0;
    virtual void setValue(const QString &key, const QVariant &value) = 0;

    /// Sees what other programs wrote and stores what was set. Waits for nobody; what cannot be stored stays set.
    virtual Outcome sync() = 0;

    /// Calls soon after what is stored may have changed, by whomever, while the returned object lives.
    virtual std::unique_ptr<QObject> watch(std::function<void()> changed) const = 0;
};
