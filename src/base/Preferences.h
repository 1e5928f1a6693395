// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <mutex>

namespace kruv {

/// The user's settings under fixed keys, each with a registered default, read at the moment of use. Values
/// may be read and stored from any thread.
class Preferences : public QObject
{
    Q_OBJECT
public:
    /// What becomes of the keys that hold a control's last state.
    enum class ControlState {
        /// The user's last choice comes back and is stored on change (the window).
        Remembered,
        /// Controls begin at the registered default and nothing is stored (the command line: the same command
        /// does the
        /// same thing whatever was last clicked in the window).
        Defaults
    };

    /// Reads and stores `file` in INI form. Registers the defaults.
    explicit Preferences(const QString &file, ControlState controlState = ControlState::Remembered);
    /// The per-user file that the program uses.
    static QString userFile();

    /// Registers a control's default that is declared elsewhere, unless the key has one already.
    void registerControl(const QString &key, const QVariant &standard);

    /// The registered default where the store holds something that is no number.
    int integer(const QString &key) const;
    bool boolean(const QString &key) const;
    QString string(const QString &key) const;
    void setValue(const QString &key, const QVariant &value);

    /// Stores the number of jobs at once and announces it.
    void setMaxThreads(int maxThreads);

Q_SIGNALS:
    void kruvMaxThreadsChangedNotification(int maxThreads);

private:
    QVariant value(const QString &key) const;
    QVariant standard(const QString &key) const;
    bool isForgotten(const QString &key) const;

    mutable std::mutex m_lock;
    QSettings m_settings;
    const ControlState m_controlState;
    QHash<QString, QVariant> m_controls;  // registered from elsewhere, with their defaults
    QHash<QString, QVariant> m_forgotten; // control states of this run only
};

} // namespace kruv
