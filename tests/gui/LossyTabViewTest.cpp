// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/WindowFixture.h"
#include "lossy/LossyTab.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTest>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;
using LossyTabViewTest = WindowTest;

TEST_F(LossyTabViewTest, ShowsTheOptionsOfTheChosenFormatAndCorrectsWhatIsTyped)
{
    const QString lossy = u"lossy"_s;
    LossyTab &tab = controller.lossyTab();
    window->selectTab(lossy);
    auto *pages = find<QStackedWidget>(page(lossy), "formatPages");
    const auto shownRate = [&] { return pages->currentWidget()->findChild<QComboBox *>(u"comboBox"_s); };
    EXPECT_TRUE(shownRate()->isVisible());
    toggle(lossy, "MP3 mode VBR");
    EXPECT_FALSE(shownRate()->isVisible());
    EXPECT_TRUE(find<QSlider>(page(lossy), "slider")->isVisible());

    toggle(lossy, "Format AAC");
    toggle(lossy, "AAC mode VBR");
    auto *stepper = find<QSpinBox>(page(lossy), "stepper");
    EXPECT_TRUE(stepper->isVisible());
    stepper->selectAll();
    QTest::keyClicks(stepper, u"128"_s);
    EXPECT_EQ(tab.stepperLevel(), 12) << "the digit that would make it 128 is refused";

    toggle(lossy, "Format HE-AAC");
    EXPECT_EQ(shownRate()->currentText(), u"60"_s);
    shownRate()->setCurrentText(u"48"_s);
    toggle(lossy, "Format Opus");
    EXPECT_EQ(shownRate()->currentText(), u"256"_s);
    EXPECT_EQ(shownRate()->itemText(0), u"96"_s);
    shownRate()->lineEdit()->selectAll();
    QTest::keyClicks(shownRate(), u"79\r"_s);
    EXPECT_EQ(tab.comboLevel(), 256);
    find<QComboBox>(page(lossy), "opusFrameSizeCombo")->setCurrentIndex(0);
    EXPECT_EQ(tab.opusFrameSizeLevel(), 2.5);
}

} // namespace kruv::test
