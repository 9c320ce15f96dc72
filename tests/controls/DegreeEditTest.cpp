#include "controls/TdDMSMakEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class DegreeEdit : public testing::Test
{
protected:
    DegreeEdit()
    {
        m_edit.SetMask(u"####:##:##.####"_s);
        m_edit.show();
        m_edit.setFocus();
    }

    /// What the edit shows, its caret as "|".
    std::string look() const
    {
        EXPECT_EQ(m_edit.text(), m_edit.GetText());
        QString text = m_edit.text();
        text.insert(m_edit.cursorPosition(), u'|');
        return text.toStdString();
    }
    void type(const char *keys, int at)
    {
        m_edit.setCursorPosition(at);
        QTest::keyClicks(&m_edit, QString::fromLatin1(keys));
    }

    CTdDMSMakEdit m_edit;
};

TEST_F(DegreeEdit, TypingReplacesAndSkipsLiterals)
{
    EXPECT_EQ(look(), "|____:__:__.____");
    type("012345678", 0);
    EXPECT_EQ(look(), "0123:45:67.8|___");
    type("x", 1); // no digit: dropped, and the caret stays behind it
    EXPECT_EQ(look(), "01|23:45:67.8___");
    type("9", 4); // on a literal
    EXPECT_EQ(look(), "0123:|45:67.8___");
    type("123456", 12);
    EXPECT_EQ(look(), "0123:45:67.8123|");
    m_edit.setSelection(1, 8);
    QTest::keyClicks(&m_edit, u"7"_s);
    EXPECT_EQ(look(), "07|23:45:67.8123");
    m_edit.SetMask(u"?##"_s, u' ');
    type("x5", 0);
    EXPECT_EQ(look(), " 5| ");
    type("-", 0);
    EXPECT_EQ(look(), "-|5 ");
}

TEST_F(DegreeEdit, AMinusOfTheMaskOrThePromptStaysInAnEmptyMask)
{
    m_edit.SetMask(u"?##-#"_s);
    EXPECT_EQ(look(), "|___-_");
    m_edit.SetMask(u"##:##"_s, u'-');
    EXPECT_EQ(look(), "|--:--");
}

TEST_F(DegreeEdit, AnAngleOutlastsAFormThatSetsTheMaskAgain)
{
    CTdDMSMakEdit edit;
    edit.SetDegree(7.5);
    edit.setProperty("mask", u"####:##:##.####"_s);
    EXPECT_EQ(edit.text().toStdString(), "   7:30: 0.0000");
    edit.SetText(edit.GetDDMMSS(8.0));
    edit.setProperty("mask", u"####:##:##.####"_s);
    EXPECT_EQ(edit.text().toStdString(), "   8: 0: 0.0000");
}

TEST_F(DegreeEdit, BackspaceRestoresWhatStoodThere)
{
    m_edit.SetText(u"012345678901"_s);
    m_edit.setCursorPosition(3);
    QTest::keyClick(&m_edit, Qt::Key_Backspace);
    EXPECT_EQ(look(), "01|_3:45:67.8901");
    m_edit.setCursorPosition(5); // behind a literal: it comes back, and the caret goes before it
    QTest::keyClick(&m_edit, Qt::Key_Backspace);
    EXPECT_EQ(look(), "01_3|:45:67.8901");
    m_edit.setCursorPosition(6);
    QTest::keyClick(&m_edit, Qt::Key_Backspace);
    EXPECT_EQ(look(), "01_3|:_5:67.8901");
}

TEST_F(DegreeEdit, DeleteClosesTheGapFromTheLeftOfItsPart)
{
    m_edit.SetText(u"012345678901"_s);
    m_edit.setCursorPosition(13);
    QTest::keyClick(&m_edit, Qt::Key_Delete);
    EXPECT_EQ(look(), "0123:45:67._89|1");
    m_edit.setCursorPosition(4);
    QTest::keyClick(&m_edit, Qt::Key_Delete);
    EXPECT_EQ(look(), "0123:|45:67._891"); // a literal comes back
    m_edit.setCursorPosition(9);
    QTest::keyClick(&m_edit, Qt::Key_Delete);
    EXPECT_EQ(look(), "0123:45:_6.|_891");
}

TEST_F(DegreeEdit, NothingCorruptsTheMask)
{
    m_edit.SetText(m_edit.GetDDMMSS(-45.5));
    const QString before = m_edit.text();
    QApplication::clipboard()->setText(QString(100000, u'x'));
    m_edit.setCursorPosition(3);
    m_edit.paste();
    EXPECT_EQ(m_edit.text(), before);
    m_edit.selectAll();
    m_edit.cut();
    EXPECT_EQ(m_edit.text(), before);
    m_edit.setSelection(2, 6);
    m_edit.del();
    EXPECT_EQ(m_edit.text().size(), before.size());
    m_edit.undo();
    EXPECT_EQ(m_edit.text(), m_edit.GetText());
    QInputMethodEvent composed;
    composed.setCommitString(u"\u4e00\u4e8c"_s);
    QApplication::sendEvent(&m_edit, &composed);
    m_edit.setText(u"12"_s); // a host that forgets the mask
    EXPECT_EQ(m_edit.text(), m_edit.GetText());
    EXPECT_EQ(m_edit.text().at(4), u':');
    EXPECT_EQ(m_edit.text().size(), before.size());
    for (const QString &absurd : {QString(), u":"_s, QString(5000, u'#'), u"?-?-"_s}) {
        m_edit.SetMask(absurd, u'-');
        type("-1-1-1", 0);
        QTest::keyClick(&m_edit, Qt::Key_Backspace);
        QTest::keyClick(&m_edit, Qt::Key_Delete);
        EXPECT_EQ(m_edit.text(), m_edit.GetText());
    }
}

TEST_F(DegreeEdit, HostsHearOfMaskedTextsAlone)
{
    int heard = 0;
    const auto check = [this, &heard](const QString &text) {
        ++heard;
        EXPECT_EQ(text, m_edit.text());
        EXPECT_EQ(text, m_edit.GetText());
    };
    QObject::connect(&m_edit, &QLineEdit::textEdited, check);
    QObject::connect(&m_edit, &QLineEdit::textChanged, check);
    type("12x", 0);
    QTest::keyClick(&m_edit, Qt::Key_Backspace);
    QApplication::clipboard()->setText(u"45"_s);
    m_edit.paste(); // without a key it is no Backspace
    EXPECT_EQ(look(), "12_5:|__:__.____");
    EXPECT_GT(heard, 4);
    m_edit.SetMask(QString(100000, u'#'));
    EXPECT_EQ(m_edit.text().size(), 100000);
}

TEST_F(DegreeEdit, TakesChangesBackAndMakesThemAgain)
{
    type("123x", 0);
    QTest::keyClick(&m_edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(look(), "12|__:__:__.____");
    m_edit.undo();
    EXPECT_EQ(look(), "1|___:__:__.____");
    QTest::keyClick(&m_edit, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(look(), "12|__:__:__.____");
    QTest::keyClicks(&m_edit, u"9"_s);
    EXPECT_FALSE(m_edit.isRedoAvailable());
    m_edit.SetDegree(7.5); // the host's
    EXPECT_FALSE(m_edit.isUndoAvailable());
    type("1", 0);
    QContextMenuEvent wanted(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&m_edit, &wanted);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    menu->actions().constFirst()->trigger();
    menu->close();
    EXPECT_EQ(look(), "|   7:30: 0.0000");
}

TEST_F(DegreeEdit, PastesWholeAnglesWhereTheHostWantsIt)
{
    QApplication::clipboard()->setText(u" 45\u00B030\u203215.25\u2033 S"_s);
    m_edit.paste();
    EXPECT_EQ(look(), "____:__:__.____|"); // one character, which is no digit
    m_edit.SetPastesAngles(true);
    QTest::keyClick(&m_edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(look(), "|- 45:30:15.2500");
    m_edit.setReadOnly(true);
    m_edit.undo();
    QTest::keyClick(&m_edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(look(), "|- 45:30:15.2500");
    m_edit.setReadOnly(false);
    m_edit.undo();
    EXPECT_EQ(m_edit.text().toStdString(), "____:__:__.____");
}

TEST_F(DegreeEdit, SwitchesToDecimalDegreesAndBack)
{
    m_edit.SetText(m_edit.GetDDMMSS(-45.5));
    EXPECT_EQ(m_edit.text().toStdString(), "- 45:30: 0.0000");
    EXPECT_DOUBLE_EQ(m_edit.GetDegree(), -45.5);
    m_edit.EnableMask(1); // it has a colon already
    m_edit.EnableMask(0);
    EXPECT_EQ(m_edit.text().toStdString(), "-44.500000000"); // deliberate
    EXPECT_DOUBLE_EQ(m_edit.GetDegree(), -44.5);
    QTest::keyClicks(&m_edit, u"7x"_s);
    EXPECT_EQ(m_edit.GetText().toStdString(), "-44.5000000007x");
    m_edit.EnableMask(0);
    m_edit.EnableMask(1);
    EXPECT_EQ(m_edit.text().toStdString(), "- 44:30: 0.0000");
}

TEST_F(DegreeEdit, ChecksTheRangeOfItsType)
{
    struct Row
    {
        int type;
        const char *text;
        const char *message; // null when it passes
    };
    const Row rows[] = {
        {1, " 180: 0: 0.0000", nullptr},
        {1, " 179:99:99.0000", nullptr},
        {1, " 180: 0: 1.0000", "Latitude value must be in -180 and 180."},
        {1, "-181: 0: 0.0000", "Latitude value must be in -180 and 180."},
        {1, "-180: 1: 0.0000", "Latitude value must be in -180 and 180."},
        {2, "  90: 0: 0.0000", nullptr},
        {2, "  90: 0: 0.0001", "Longitude value must be in -90 and 90. "},
        {2, "  91: 0: 0.0000", "Longitude value must be in -90 and 90. "},
        {0, " 999:99:99.0000", nullptr},
    };
    for (const Row &row : rows) {
        m_edit.SetEditType(row.type);
        m_edit.SetText(QString::fromLatin1(row.text).remove(u':').remove(u'.'));
        QString message;
        QTimer::singleShot(0, &m_edit, [&message] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                message = box->text();
                box->accept();
            }
        });
        EXPECT_EQ(m_edit.CheckDataValid(1), row.message ? 0 : 1) << row.text;
        QCoreApplication::processEvents();
        EXPECT_EQ(message.toStdString(), row.message ? row.message : "") << row.text;
        EXPECT_EQ(m_edit.CheckDataValid(0), row.message ? 0 : 1); // silent
    }
}

} // namespace
