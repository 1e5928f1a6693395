// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>

#include <gtest/gtest.h>

int main(int argumentCount, char **arguments)
{
    qputenv("KRUV_JOURNAL", ""); // no test writes into a person's journal
    testing::InitGoogleTest(&argumentCount, arguments);
    // Tests are listed without the environment that they run in.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argumentCount, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
