// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/PieceRelay.h"

#include "platform/MainThread.h"

#include <utility>

namespace kruv {

void PieceRelay::put(const QString &piece)
{
    constexpr qsizetype mostLength = qsizetype(512) * 1024;
    std::unique_lock lock(m_lock);
    m_handedOver.wait(lock, [this] { return m_length < mostLength; });
    m_pieces.append(piece);
    m_length += piece.size();
    if (m_pieces.size() == 1) {
        MainThread::post([self = shared_from_this()] { self->handOver(); });
    }
}

void PieceRelay::handOver()
{
    QStringList pieces;
    {
        const std::lock_guard lock(m_lock);
        pieces = std::exchange(m_pieces, {});
        m_length = 0;
    }
    m_handedOver.notify_one();
    for (const QString &piece : std::as_const(pieces)) {
        m_read(piece);
    }
}

} // namespace kruv
