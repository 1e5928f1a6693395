// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <unistd.h>

namespace kruv {

/// An open file, pipe or the like, closed with the object; below 0 there is none.
class Descriptor
{
public:
    explicit Descriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor() { reset(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int get() const { return m_descriptor; }
    bool isOpen() const { return m_descriptor >= 0; }
    void reset(int descriptor = -1)
    {
        if (isOpen()) {
            close(m_descriptor);
        }
        m_descriptor = descriptor;
    }

private:
    int m_descriptor;
};

} // namespace kruv
