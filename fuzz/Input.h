// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// An input's bytes, taken from the front; an input that has ended gives zeros and empty texts.
class Input {
public:
    Input(const std::uint8_t *data, std::size_t size) : m_data(data), m_size(size) {}

    std::size_t size() const { return m_size; }

    template <class Number>
    Number number()
    {
        Number value{};
        const std::size_t count = std::min(m_size, sizeof(Number));
        std::memcpy(&value, m_data, count);
        skip(count);
        return value;
    }

    QByteArray bytes(std::size_t most)
    {
        const std::size_t count = std::min(m_size, most);
        const QByteArray taken(reinterpret_cast<const char *>(m_data), static_cast<qsizetype>(count));
        skip(count);
        return taken;
    }

    QByteArray rest() { return bytes(m_size); }

    /// The rest as a text: after an odd byte as UTF-16, lone surrogates and all, otherwise as UTF-8.
    QString text()
    {
        const bool utf16 = number<std::uint8_t>() % 2 == 1;
        const QByteArray raw = rest();
        if (!utf16)
            return QString::fromUtf8(raw);
        QString units(raw.size() / 2, Qt::Uninitialized);
        std::memcpy(units.data(), raw.constData(), static_cast<std::size_t>(units.size()) * sizeof(QChar));
        return units;
    }

private:
    void skip(std::size_t count)
    {
        m_data += count;
        m_size -= count;
    }

    const std::uint8_t *m_data;
    std::size_t m_size;
};
