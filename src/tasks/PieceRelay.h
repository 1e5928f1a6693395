// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace kruv {

/// Carries the pieces of a tool's output from the thread that reads them to the main thread: one by one, in
/// their order, with one wake-up for all that have come meanwhile. The reading thread waits where the main
/// thread falls behind, and the tool with it, so a flood fills no memory.
class PieceRelay : public std::enable_shared_from_this<PieceRelay>
{
public:
    using Reader = std::function<void(const QString &piece)>;

    /// `read` is called on the main thread; what it captures lives until the last piece has come.
    explicit PieceRelay(Reader read)
        : m_read(std::move(read))
    {
    }

    /// Any thread but the main one.
    void put(const QString &piece);

private:
    void handOver();

    const Reader m_read;
    std::mutex m_lock;
    std::condition_variable m_handedOver;
    QStringList m_pieces;
    qsizetype m_length = 0; // of m_pieces, in UTF-16 units
};

} // namespace kruv
