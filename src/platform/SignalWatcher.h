// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

class QSocketNotifier;

namespace kruv {

/// Turns SIGINT, SIGTERM and SIGHUP into a Qt signal on the main thread. One at a time may exist.
class SignalWatcher : public QObject
{
    Q_OBJECT
public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

Q_SIGNALS:
    void interrupted();

private:
    void drain();

    int m_descriptor = -1;
};

} // namespace kruv
