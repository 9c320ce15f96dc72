#include "controls/TdNumEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTest>

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

TEST(NumEdit, TakesTheCharactersOfANumberWhereTheyMayStand)
{
    struct Row
    {
        int mode;
        const char *text; // "|" is the caret
        const char *taken;
        const char *refused;
    };
    const Row rows[] = {
        {20, "|", "0-.", "eE+ ,x"}, {20, "|-1", "7.", "-e"}, {20, "-|1", "7.", "-e"}, {20, "1|2", "7.e", "-"},
        {20, "1e|", "7-", "e."},    {20, "1e|5", "-", "e."}, {20, "|1e5", ".-", "e"}, {20, "1.|", "e5", ".-"},
        {10, "12|", "3e", ".-+"},   {10, "1e|", "-3", "e."}, {0, "|", "", "1-e."},
    };
    for (const Row &row : rows) {
        QString text = QString::fromLatin1(row.text);
        const qsizetype caret = text.indexOf(u'|');
        text.remove(caret, 1);
        for (const char *typed = row.taken; *typed; ++typed)
            EXPECT_TRUE(NumberInput::accepts(row.mode, text, caret, QLatin1Char(*typed))) << row.text << ' ' << *typed;
        for (const char *typed = row.refused; *typed; ++typed)
            EXPECT_FALSE(NumberInput::accepts(row.mode, text, caret, QLatin1Char(*typed))) << row.text << ' ' << *typed;
    }
}

TEST(NumEdit, KeepsEveryTextOnTheWayInTheRange)
{
    CTdNumEdit edit;
    edit.SetEditMode(NumberInput::Whole);
    edit.SetRange(5, 10);
    QTest::keyClicks(&edit, u"10"_s); // deliberate: 1 is outside already, and so is 0
    EXPECT_EQ(edit.text().toStdString(), "");
    QTest::keyClicks(&edit, u"7x"_s);
    EXPECT_EQ(edit.text().toStdString(), "7");
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(edit.text().toStdString(), "7");
    QApplication::clipboard()->setText(u"0 apples"_s);
    QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit.text().toStdString(), "7");
    edit.SetRange(-100, 100);
    QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(edit.text().toStdString(), "70 apples"); // a paste is not filtered
    EXPECT_EQ(edit.GetValueL(), 70);
    QInputMethodEvent composed;
    composed.setCommitString(u"1,2"_s);
    edit.clear();
    QApplication::sendEvent(&edit, &composed);
    EXPECT_EQ(edit.text().toStdString(), "12");
    edit.setText(u"500"_s); // the program may
    QTest::keyClick(&edit, Qt::Key_Left);
    EXPECT_EQ(edit.cursorPosition(), 2);
    edit.SetRange(10, 5);
    QTest::keyClicks(&edit, u"7"_s);
    EXPECT_EQ(edit.text().toStdString(), "500");
}

TEST(NumEdit, WhatIsTypedReplacesTheSelection)
{
    CTdNumEdit edit;
    edit.setText(u"-1.5e3"_s);
    edit.selectAll();
    QTest::keyClicks(&edit, u"-3.5e1"_s);
    EXPECT_EQ(edit.text().toStdString(), "-3.5e1");
    edit.setSelection(2, 2); // the point and a digit
    QTest::keyClicks(&edit, u"-.2"_s);
    EXPECT_EQ(edit.text().toStdString(), "-3.2e1");
}

TEST(NumEdit, NothingRefusedIsHeardOfOrForgetsWhatCanBeUndone)
{
    CTdNumEdit edit;
    edit.SetRange(0.0, 50.0);
    QTest::keyClicks(&edit, u"4"_s);
    int heard = 0;
    QObject::connect(&edit, &QLineEdit::textChanged, [&heard] { ++heard; });
    struct Row
    {
        QString typed;
        Qt::KeyboardModifiers modifiers;
    };
    const Row rows[] = {
        {u"7"_s, Qt::NoModifier}, // 47 would do, 77 not
        {u"7"_s, Qt::NoModifier},
        {u"\U0001F600"_s, Qt::NoModifier},
        {u"\u200f"_s, Qt::ControlModifier | Qt::ShiftModifier},
        {u"x"_s, Qt::MetaModifier},
        {u"1x"_s, Qt::NoModifier}, // keys of some keyboards type two characters
    };
    for (const Row &row : rows) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_unknown, row.modifiers, row.typed);
        QApplication::sendEvent(&edit, &key);
        EXPECT_EQ(edit.text().toStdString(), "47") << row.typed.toStdString();
    }
    EXPECT_EQ(heard, 1);
    edit.undo();
    EXPECT_EQ(edit.text().toStdString(), "");
    edit.setText(u"500"_s);
    edit.clear();
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClicks(&edit, u"77"_s); // the range holds after whatever happened
    EXPECT_EQ(edit.text().toStdString(), "7");
}

TEST(NumEdit, ShowsAndReadsNumbersWhateverTheLocale)
{
    CTdNumEdit edit;
    edit.SetValue(-3);
    EXPECT_EQ(edit.text().toStdString(), "-3");
    edit.SetValue(1.5);
    EXPECT_EQ(edit.text().toStdString(), "1.500000");
    EXPECT_DOUBLE_EQ(edit.GetValueD(), 1.5);
    edit.SetValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(edit.text().toStdString(), "");
    EXPECT_EQ(edit.GetValueD(), 0.0);
    edit.setText(u"99999999999999999999"_s);
    EXPECT_EQ(edit.GetValueL(), std::numeric_limits<qint32>::max());
}

} // namespace
