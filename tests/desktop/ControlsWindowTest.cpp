#include "ControlsWindow.h"
#include "ControlPages.h"
#include "DesktopFixture.h"
#include "controls/ListCtrlEx.h"
#include "controls/TdDMSMakEdit.h"
#include "controls/TdEditSlider.h"
#include "controls/TdNumEdit.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSet>
#include <QToolBar>
#include <QWheelEvent>

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
        QSet<QWidget *> stops;
        for (QWidget *widget : m_window->page()->findChildren<QWidget *>()) {
            const bool isStop = widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy();
            if (isStop && widget->isEnabled() && widget->isVisible())
                stops.insert(widget);
        }
        EXPECT_FALSE(stops.isEmpty()) << title << " has no place for the keyboard";
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            QSet<QWidget *> missed = stops;
            qsizetype steps = stops.size() + 1; // and the button
            for (; steps >= 0; --steps) {
                QTest::keyClick(m_window->focusWidget(), key);
                missed.remove(m_window->focusWidget());
                if (m_window->focusWidget() == list)
                    break;
            }
            EXPECT_TRUE(m_window->focusWidget() == list && steps == 0) << title << " holds the keyboard";
            EXPECT_TRUE(missed.isEmpty()) << title << " hides " << (*missed.begin())->metaObject()->className();
        }
        QTest::keyClick(list, Qt::Key_Down);
    }
}

TEST_F(Controls, TheWheelChangesNothingThatHasNotTheFocus)
{
    auto *list = m_window->findChild<QListWidget *>();
    for (int i = 0; i < m_window->pageCount(); ++i) {
        m_window->showPage(i);
        list->setFocus();
        const QString before = m_window->valueText();
        for (QWidget *control : m_window->page()->findChildren<QWidget *>()) {
            const QPointF middle = control->rect().center();
            for (const int turn : {-240, 240, 240}) {
                QWheelEvent wheel(middle, control->mapToGlobal(middle), {}, {0, turn}, {}, {}, Qt::NoScrollPhase,
                                  false);
                QApplication::sendEvent(control, &wheel);
            }
        }
        EXPECT_EQ(m_window->valueText(), before) << list->currentItem()->text().toStdString();
        EXPECT_EQ(m_window->focusWidget(), list);
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
    const QList<QComboBox *> boxes = page("Combo boxes on toolbars")->findChildren<QComboBox *>();
    ASSERT_EQ(boxes.size(), 4);
    boxes[0]->lineEdit()->selectAll();
    QTest::keyClicks(boxes[0]->lineEdit(), u"1:7,500\r"_s);
    EXPECT_EQ(m_window->commandText().toStdString(), "61002, with the value 1:7,500 · Metres");
    QTest::keyClick(boxes[1], Qt::Key_Down);
    EXPECT_EQ(m_window->commandText().toStdString(), "61003, with the value 1:7,500 · Feet");
    EXPECT_EQ(boxes[2]->currentText(), boxes[0]->currentText());
    EXPECT_EQ(boxes[3]->currentText(), boxes[1]->currentText());
}

TEST_F(Controls, FieldsAreAddedNamedAndRemovedToTheLast)
{
    auto *list = page("Report list")->findChild<CListCtrlEx *>();
    const QList<QPushButton *> buttons = m_window->page()->findChildren<QPushButton *>();
    ASSERT_TRUE(list && buttons.size() == 2);
    QApplication::setActiveWindow(m_window);
    const auto type = [this](const QString &text) { QTest::keyClicks(m_window->focusWidget(), text); };
    buttons[0]->click();
    type(u"name\r"_s); // there is one
    EXPECT_TRUE(list->IsEditing());
    buttons[0]->click();
    EXPECT_EQ(list->GetItemCount(), 8);
    type(u"s\r"_s);
    EXPECT_EQ(list->GetItemText(1, 0).toStdString(), "names");
    EXPECT_EQ(m_window->valueText().toStdString(), "8 fields, 2 required");
    // A type brings its length; only that of texts may be changed.
    EXPECT_TRUE(list->EditItem(1, 1));
    QTest::keyClick(m_window->focusWidget(), Qt::Key_Home);
    QTest::keyClick(m_window->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(list->GetItemText(1, 2).toStdString(), "1");
    EXPECT_FALSE(list->EditItem(1, 2));
    list->selectAll();
    buttons[1]->click();
    EXPECT_EQ(m_window->valueText().toStdString(), "0 fields, 0 required");
    EXPECT_FALSE(buttons[1]->isEnabled());
    buttons[0]->click();
    EXPECT_TRUE(list->IsEditing());
}

/// Presses the button of a page that is called @p text.
void press(QWidget *page, const char *text)
{
    for (auto *button : page->findChildren<QPushButton *>()) {
        if (button->text().remove(u'&') == QLatin1StringView(text)) {
            button->setFocus();
            return QTest::keyClick(button, Qt::Key_Space);
        }
    }
    FAIL() << "no button " << text;
}

TEST_F(Controls, TabOrderIsScrambledAndCollated)
{
    QWidget *form = page("Tab order");
    const std::string scrambled = m_window->valueText().toStdString();
    press(form, "Collate");
    EXPECT_EQ(m_window->valueText().toStdString(), "First name, Last name, Street, House number, Postcode, Town");
    press(form, "Scramble");
    EXPECT_EQ(m_window->valueText().toStdString(), scrambled);
}

TEST_F(Controls, AnnotationsThatCannotBeAreToldAndNotStored)
{
    const struct
    {
        int field; // height, font, decimals
        const char *typed, *told;
    } rows[] = {
        {0, "0.01", "The text height must be from 0.1 to 1000 millimeters."},
        {0, "", "The text height must be from 0.1 to 1000 millimeters."},
        {1, "Nonesuch", "The font “Nonesuch” is not installed."},
        {2, "11", "The precision must be from 0 to 10 decimals."},
        {2, "", "The precision must be from 0 to 10 decimals."},
        {2, "3", "2.5 mm · 1234.568 Meter · not stored"},
    };
    QWidget *form = page("Annotation standard");
    const QList<QLineEdit *> fields = form->findChildren<QLineEdit *>();
    ASSERT_EQ(fields.size(), 3);
    for (const auto &row : rows) {
        press(form, "Reset");
        fields[row.field]->setFocus();
        fields[row.field]->selectAll();
        QTest::keyClick(fields[row.field], Qt::Key_Delete);
        QTest::keyClicks(fields[row.field], QString::fromLatin1(row.typed));
        EXPECT_EQ(m_window->valueText().toStdString(), row.told);
    }
    press(form, "Store");
    EXPECT_EQ(m_window->valueText().toStdString(), "2.5 mm · 1234.568 Meter · as stored");
    QFile::remove(CTdProfileFile::defaultPath());
}

TEST_F(Controls, FilesAndPicturesThatCannotBeReadAreTold)
{
    auto *path = page("File dialog")->findChild<QLineEdit *>();
    path->selectAll();
    QTest::keyClicks(path, u"/nowhere/at all.shp\r"_s);
    EXPECT_EQ(m_window->valueText().toStdString(), "The file does not exist.");
    auto *percent = page("Bitmap")->findChild<CTdNumEdit *>();
    percent->selectAll();
    QTest::keyClicks(percent, u"0"_s);
    EXPECT_EQ(m_window->valueText().toStdString(), "A picture cannot have 0 × 0 pixels.");
    percent->selectAll();
    QTest::keyClicks(percent, u"50"_s);
    EXPECT_EQ(m_window->valueText().left(27).toStdString(), "120 × 80 pixels of 4 bits ·");
}

} // namespace
