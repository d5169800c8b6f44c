// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Http/Connections.h"
#include "Http/TransferError.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QTimer>
#include <QUrl>

#include <tl/expected.hpp>

#include <coroutine>
#include <memory>
#include <optional>

/// What a server gave: a whole reply.
struct TransferReply {
    QByteArray body;
    std::optional<QUrl> redirection; ///< where the server sends the request instead, be it a valid address or not
};

/// One GET, from the wait for its proxy to the last byte. It begins at once; whoever awaits it goes on from the event
/// loop, with nothing of libcurl's on the stack.
class Transfer : public QObject {
    Q_OBJECT

public:
    using Outcome = tl::expected<TransferReply, TransferError>;

    Transfer(QUrl url, std::shared_ptr<Connections> connections, const QFuture<QByteArray> &proxy);
    ~Transfer() override;
    Q_DISABLE_COPY_MOVE(Transfer)

    /// Ends it as cancelled; whoever awaits it goes on before this returns.
    void cancel();

    /// What one coroutine awaits.
    struct End {
        Transfer &transfer;

        bool await_ready() const { return false; }
        void await_suspend(std::coroutine_handle<> waiting) const { transfer.m_waiting = waiting; }
        Outcome await_resume() const { return std::move(*transfer.m_outcome); }
    };
    End outcome() { return {*this}; }

private:
    struct Cleanup {
        void operator()(CURL *transfer) const { curl_easy_cleanup(transfer); }
    };

    void begin();
    static std::size_t readHeader(const char *bytes, std::size_t size, std::size_t count, void *self);
    static std::size_t readBody(const char *bytes, std::size_t size, std::size_t count, void *self);
    void finish(CURLcode code);
    void fail(const QString &description);
    void end(Outcome outcome);

    QUrl m_url;
    std::shared_ptr<Connections> m_connections;
    QFutureWatcher<QByteArray> m_proxy;
    QTimer m_silence;
    std::unique_ptr<CURL, Cleanup> m_curl;
    std::size_t m_headerSize = 0;
    QByteArray m_body;
    std::optional<Outcome> m_outcome;
    std::coroutine_handle<> m_waiting;
};
