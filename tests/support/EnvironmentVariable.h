// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>

#include <optional>

namespace kruv::test {

/// Sets (or with nothing, unsets) a variable of this process and puts the old value back. Only for tests
/// without other threads at work.
class EnvironmentVariable
{
public:
    EnvironmentVariable(const char *name, const std::optional<QByteArray> &value)
        : m_name(name)
    {
        if (qEnvironmentVariableIsSet(name)) {
            m_before = qgetenv(name);
        }
        set(value);
    }
    ~EnvironmentVariable() { set(m_before); }
    EnvironmentVariable(const EnvironmentVariable &) = delete;
    EnvironmentVariable &operator=(const EnvironmentVariable &) = delete;

private:
    void set(const std::optional<QByteArray> &value)
    {
        if (value) {
            qputenv(m_name, *value);
        } else {
            qunsetenv(m_name);
        }
    }

    const char *m_name;
    std::optional<QByteArray> m_before;
};

} // namespace kruv::test
