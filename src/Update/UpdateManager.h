// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Update/RemoteUpdate.h"

#include <QCoroTask>
#include <QString>
#include <QUrl>

/// Tells the user that a newer release exists. It keeps nothing between checks, and checks may overlap.
class UpdateManager {
public:
    static UpdateManager &shared();

    /// Reads the feed and shows what came of it. A silent check announces a newer release only; an up-to-date
    /// program and every failure stay quiet apart from a log line. Ends when the alert is answered.
    QCoro::Task<> checkForUpdates(bool silent) const;

    /// True when `remote` is the newer of two dotted versions. Pieces compare as numbers; a piece that is no
    /// 64-bit integer is dropped ("2.0-beta" is 2), a missing one counts as 0.
    static bool isVersionNewer(const QString &remote, const QString &current);

private:
    UpdateManager();

    static QCoro::Task<> showUpdateAlert(RemoteUpdate update);
    static QCoro::Task<> showNoUpdateAlert();
    static QCoro::Task<> showErrorAlert(QString description);

    QUrl m_updateURL;
};
