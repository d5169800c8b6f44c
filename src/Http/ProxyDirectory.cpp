// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Http/ProxyDirectory.h"

#include "Http/SystemProxy.h"

#include <QPromise>
#include <QUrl>

#include <thread>

namespace {

QFuture<QByteArray> ask(const QByteArray &server)
{
    QPromise<QByteArray> promise;
    promise.start();
    const QFuture<QByteArray> answer = promise.future();
    std::thread([server, promise = std::move(promise)]() mutable {
        promise.addResult(SystemProxy::forServer(server));
        promise.finish();
    }).detach(); // it may never end, and shares nothing but the promise
    return answer;
}

} // namespace

QFuture<QByteArray> ProxyDirectory::proxyFor(const QUrl &address)
{
    const QUrl server =
        address.adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment);
    const QByteArray name = server.toEncoded() + '/';
    const auto known = m_questions.constFind(name);
    const bool asked = known != m_questions.constEnd();
    if (asked && (known->answer.isFinished() || !known->overdue.hasExpired()))
        return known->answer;
    const auto patience = asked ? 2 * known->patience : m_patience;
    return m_questions.insert(name, {.answer = ask(name), .patience = patience, .overdue = QDeadlineTimer(patience)})
        ->answer;
}

void ProxyDirectory::forgetAnswers()
{
    m_questions.removeIf([](const auto &question) { return question.value().answer.isFinished(); });
}
