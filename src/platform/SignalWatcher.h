// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

namespace kruv {

/// Turns signals of the system into Qt signals on the main thread. One at a time may exist.
class SignalWatcher : public QObject
{
    Q_OBJECT
public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

    /// For a program that nobody can ask yet: SIGUSR1 does nothing.
    static void ignoreQuestions();
    /// Stops this process the way Ctrl-Z does; returns when it was continued. At once where the system finds
    /// nobody who could continue it.
    static void stopProcess();

Q_SIGNALS:
    /// SIGINT: Ctrl-C.
    void interrupted();
    /// SIGTERM, or SIGHUP: the terminal or the session has gone.
    void endWanted();
    /// SIGTSTP: Ctrl-Z. Whoever takes it calls stopProcess().
    void stopWanted();
    /// SIGUSR1.
    void statusWanted();

private:
    void drain();
    void tell(int signal);

    int m_descriptor = -1;
};

} // namespace kruv
