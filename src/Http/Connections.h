// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QBasicTimer>
#include <QObject>

#include <curl/curl.h>

#include <functional>
#include <map>
#include <memory>

class QSocketNotifier;

/// libcurl's transfers on Qt's event loop, and the connections that they leave open for one another.
class Connections : public QObject {
    Q_OBJECT

public:
    Connections();
    ~Connections() override;

    using Ended = std::function<void(CURLcode)>;

    /// Lets the transfer run; calls this once when it has ended, unless it has been withdrawn before. The call comes
    /// from amid libcurl's events: it may begin and withdraw transfers, but not destroy this.
    void begin(CURL *transfer, Ended ended);

    /// Ends the transfer, if it runs still; it may then be cleaned up.
    void withdraw(CURL *transfer);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Watch { // of one socket
        std::unique_ptr<QSocketNotifier, void (*)(QSocketNotifier *)> reading;
        std::unique_ptr<QSocketNotifier, void (*)(QSocketNotifier *)> writing;
    };
    struct Cleanup {
        void operator()(CURLM *multi) const { curl_multi_cleanup(multi); }
    };

    static int watch(CURL *transfer, curl_socket_t socket, int what, void *self, void *);
    static int wakeIn(CURLM *multi, long milliseconds, void *self);
    Watch watchOf(curl_socket_t socket, int what);
    void act(curl_socket_t socket, int events);

    std::map<curl_socket_t, Watch> m_watches;
    std::map<CURL *, Ended> m_transfers;
    QBasicTimer m_timer;
    std::unique_ptr<CURLM, Cleanup> m_multi; // the first to go: it still calls back meanwhile
};
