// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCoreApplication>

#include <gtest/gtest.h>

// The engine needs an event loop to post to, and a display is not needed for it.
int main(int argumentCount, char **arguments)
{
    qputenv("KRUV_JOURNAL", ""); // no test writes into a person's journal
    testing::InitGoogleTest(&argumentCount, arguments);
    const QCoreApplication application(argumentCount, arguments);
    return RUN_ALL_TESTS();
}
