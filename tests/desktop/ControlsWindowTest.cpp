#include "ControlsWindow.h"
#include "ControlPages.h"
#include "DesktopFixture.h"
#include "controls/TdDMSMakEdit.h"
#include "controls/TdEditSlider.h"

#include <QListWidget>
#include <QToolBar>

namespace {

class Controls : public WindowFixture
{
protected:
    Controls()
    {
        window->actions()[Actions::Controls]->trigger();
        m_window = window->findChild<ControlsWindow *>();
    }
    QWidget *page(const char *title)
    {
        for (int i = 0; i < m_window->pageCount(); ++i) {
            if (std::string_view(controlPages()[static_cast<size_t>(i)].title) == title)
                m_window->showPage(i);
        }
        return m_window->page();
    }

    ControlsWindow *m_window;
};

TEST_F(Controls, EveryPageIsReachedByKeysAndTellsItsValue)
{
    ASSERT_TRUE(m_window && m_window->isVisible());
    auto *list = m_window->findChild<QListWidget *>();
    for (int i = 0; i < m_window->pageCount(); ++i) {
        list->setFocus();
        const std::string title = list->currentItem()->text().toStdString();
        EXPECT_FALSE(m_window->valueText().isEmpty()) << title;
        QTest::keyClick(list, Qt::Key_Tab);
        QWidget *focus = m_window->focusWidget();
        EXPECT_TRUE(focus && m_window->page()->isAncestorOf(focus)) << title << " has no place for the keyboard";
        QTest::keyClick(list, Qt::Key_Down);
    }
}

TEST_F(Controls, AnglesFollowMaskAndRange)
{
    auto *edit = page("Angle")->findChild<CTdDMSMakEdit *>();
    ASSERT_TRUE(edit);
    edit->setCursorPosition(0);
    QTest::keyClicks(edit, u"0200"_s);
    EXPECT_EQ(m_window->valueText().toStdString(), "200.504222222° · 200° 30′ 15.2000″ · out of the range");
}

TEST_F(Controls, CommandsShowWithTheirValue)
{
    auto *slider = page("Slider edit")->findChild<CTdEditSlider *>();
    ASSERT_TRUE(slider);
    slider->SetPos(0);
    QTest::keyClick(slider->focusProxy(), Qt::Key_End);
    QTest::keyClicks(slider->focusProxy(), u"7\r"_s);
    EXPECT_EQ(m_window->commandText().toStdString(), "61000, with the value 7");
    const QList<CTdEditSlider *> copies = page("Slider on toolbars")->findChildren<CTdEditSlider *>();
    ASSERT_EQ(copies.size(), 2);
    EXPECT_EQ(copies.first()->window(), m_window);
    QTest::keyClick(copies.first()->focusProxy(), Qt::Key_End);
    QTest::keyClicks(copies.first()->focusProxy(), u"9\r"_s);
    EXPECT_EQ(copies.last()->GetPos(), 9);
    EXPECT_EQ(m_window->commandText().toStdString(), "61001, with the value 9");
}

} // namespace
