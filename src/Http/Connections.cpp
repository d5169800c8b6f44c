// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/Connections.h"

#include "Http/InheritedSockets.h"

#include <QSocketNotifier>
#include <QTimerEvent>

#include <utility>

namespace {

/// A notifier may go amid its own signal.
void retire(QSocketNotifier *notifier)
{
    notifier->setEnabled(false);
    notifier->deleteLater();
}

/// CURLMOPT_QUICK_EXIT, by number because the program may run with a newer libcurl than it was built with. From 8.20 on
/// the threads that look up names belong to the multi handle, whose end would wait for them. What is older refuses the
/// option and has no need of it.
constexpr auto quickExit = static_cast<CURLMoption>(CURLOPTTYPE_LONG + 21);

} // namespace

Connections::Connections() : m_multi(curl_multi_init())
{
    curl_multi_setopt(m_multi.get(), CURLMOPT_SOCKETFUNCTION, &Connections::watch);
    curl_multi_setopt(m_multi.get(), CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(m_multi.get(), CURLMOPT_TIMERFUNCTION, &Connections::wakeIn);
    curl_multi_setopt(m_multi.get(), CURLMOPT_TIMERDATA, this);
    curl_multi_setopt(m_multi.get(), quickExit, 1L);
}

Connections::~Connections() = default;

void Connections::begin(CURL *transfer, Ended ended)
{
    m_transfers.emplace(transfer, std::move(ended));
    curl_multi_add_handle(m_multi.get(), transfer); // which sets the timer
}

void Connections::withdraw(CURL *transfer)
{
    if (m_transfers.erase(transfer) > 0)
        curl_multi_remove_handle(m_multi.get(), transfer);
}

void Connections::timerEvent(QTimerEvent *)
{
    m_timer.stop(); // libcurl sets it anew where it wants to
    act(CURL_SOCKET_TIMEOUT, 0);
}

void Connections::act(curl_socket_t socket, int events)
{
    int running = 0;
    curl_multi_socket_action(m_multi.get(), socket, events, &running);
    int waiting = 0;
    while (const CURLMsg *const message = curl_multi_info_read(m_multi.get(), &waiting)) {
        const CURLcode code = message->data.result; // the message goes with the transfer
        CURL *const transfer = message->easy_handle;
        const Ended ended = std::exchange(m_transfers[transfer], nullptr);
        withdraw(transfer);
        ended(code);
    }
}

int Connections::wakeIn(CURLM *, long milliseconds, void *self)
{
    auto *const connections = static_cast<Connections *>(self);
    if (milliseconds < 0)
        connections->m_timer.stop();
    else
        connections->m_timer.start(static_cast<int>(milliseconds), connections);
    return 0;
}

int Connections::watch(CURL *, curl_socket_t socket, int what, void *self, void *)
{
    auto *const connections = static_cast<Connections *>(self);
    connections->m_watches.erase(socket);
    if (what == CURL_POLL_REMOVE)
        return 0;
    keepSocketsToOurselves();
    connections->m_watches.emplace(socket, connections->watchOf(socket, what));
    return 0;
}

Connections::Watch Connections::watchOf(curl_socket_t socket, int what)
{
    const auto notifier = [this, socket](bool wanted, QSocketNotifier::Type type, int event) {
        auto *const made = wanted ? new QSocketNotifier(socket, type, this) : nullptr;
        if (made != nullptr)
            connect(made, &QSocketNotifier::activated, this, [this, socket, event] { act(socket, event); });
        return std::unique_ptr<QSocketNotifier, void (*)(QSocketNotifier *)>(made, &retire);
    };
    return {.reading = notifier((what & CURL_POLL_IN) != 0, QSocketNotifier::Read, CURL_CSELECT_IN),
        .writing = notifier((what & CURL_POLL_OUT) != 0, QSocketNotifier::Write, CURL_CSELECT_OUT)};
}
