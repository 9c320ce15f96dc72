#include "colour/ColorsetTable.h"
#include "colour/HSVType.h"
#include "colour/RGBType.h"
#include "colour/TdColorListBox.h"
#include "colour/TdDlgRibbon.h"
#include "colour/TdIDEDlgColorSet.h"
#include "common/TdFileChooser.h"
#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxColorsetEx.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;
using Dialog = CTdIDEDlgColorSet;

/// Answers with the path that a test gives.
class Chooser : public CTdFileChooser
{
public:
    Chooser() { SetCurrent(this); }
    ~Chooser() override { SetCurrent(nullptr); }

    std::optional<QString> ChooseFileToOpen(QWidget *, const FileRequest &request) override { return answer(request); }
    std::optional<QString> ChooseFileToSave(QWidget *, const FileRequest &request) override { return answer(request); }

    std::optional<QString> path;
    int asked = 0;

private:
    std::optional<QString> answer(const FileRequest &request)
    {
        ++asked;
        EXPECT_EQ(request.filter, u"Terravox 3D Colorset (*.sct)|*.sct||"_s);
        EXPECT_TRUE(request.mustExist && request.askOverwrite);
        return path;
    }
};

/// The dialog, shown, and a user who clicks and types.
class DlgColorSet : public testing::Test
{
protected:
    void show(const QList<COLORREF> &colors, double minimum = 0, double maximum = 100)
    {
        CTxColorsetEx colorset;
        colorset.SetZFloor(minimum);
        colorset.SetZCeiling(maximum);
        for (const COLORREF color : colors)
            colorset.AddColor(color);
        m_dialog.InitColorset(colorset);
        m_dialog.show();
        m_dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_dialog)); // keys of the list work in the active window alone
    }

    QPushButton *button(int id) { return m_dialog.GetDlgItem<QPushButton>(id); }
    QLineEdit *edit(int id) { return m_dialog.GetDlgItem<QLineEdit>(id); }
    CTdColorListBox *list() { return m_dialog.GetDlgItem<CTdColorListBox>(Dialog::ColorList); }
    QList<COLORREF> shown() { return list()->GetColors().GetColors(); }
    /// What the dialog would hand back, the other list of the two.
    QList<COLORREF> kept()
    {
        m_dialog.accept();
        QList<COLORREF> colors;
        for (qint32 i = 0; i < m_dialog.GetColorset().GetSize(); ++i)
            colors.append(m_dialog.GetColorset().GetRGB(i));
        return colors;
    }
    void click(int id) { QTest::mouseClick(button(id), Qt::LeftButton); }
    void type(int id, const QString &text)
    {
        edit(id)->setFocus();
        edit(id)->selectAll();
        QTest::keyClicks(edit(id), text);
    }
    /// Clicks what shows a message. @return the message; empty when there is none
    QString messageOf(int id)
    {
        QString text;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &m_dialog, [this, &text] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                const QMessageBox::StandardButton answer =
                    box->icon() == QMessageBox::Question ? m_answer : QMessageBox::Ok;
                EXPECT_TRUE(box->icon() == QMessageBox::Question || box->icon() == QMessageBox::Information);
                text = box->text();
                box->button(answer)->click();
            }
        });
        timer.start(0);
        click(id);
        return text;
    }

    Chooser m_chooser;
    QTemporaryDir m_folder;
    QMessageBox::StandardButton m_answer = QMessageBox::No; // to questions
    Dialog m_dialog{0x3080E0};
};

TEST_F(DlgColorSet, EveryControlHasItsNumberAndNoMnemonicComesTwice)
{
    show({1});
    EXPECT_EQ(m_dialog.windowTitle(), u"Edit Colorset"_s);
    for (int id = Dialog::AddButton; id <= Dialog::StartSpin; ++id)
        EXPECT_NE(m_dialog.GetDlgItem(id), nullptr) << id;
    EXPECT_EQ(button(Dialog::GlobalMaximumButton)->text(), u"&Global Max"_s);
    EXPECT_EQ(button(Dialog::GlobalMinimumButton)->text(), u"Gl&obal Min"_s);
    QStringList seen;
    for (const QWidget *control : m_dialog.findChildren<QWidget *>()) {
        const QString text = control->property("text").toString();
        const qsizetype at = text.indexOf(u'&');
        if (at >= 0)
            seen << text.mid(at + 1, 1).toLower();
    }
    EXPECT_GE(seen.size(), 16);
    EXPECT_EQ(seen.removeDuplicates(), 0) << seen.join(u' ').toStdString();
}

TEST_F(DlgColorSet, HueOf400IsStoredAs359AndAllPartsFollow)
{
    show({});
    type(Dialog::HueEdit, u"400"_s);
    EXPECT_EQ(edit(Dialog::HueEdit)->text(), u"359"_s);
    EXPECT_EQ(m_dialog.GetColor(), HSVType(359, 200, 224).toRGB().color());
    EXPECT_EQ(edit(Dialog::RedEdit)->text(), u"224"_s);
    type(Dialog::RedEdit, u"12abc"_s);
    EXPECT_EQ(TxColorRef::red(m_dialog.GetColor()), 12);
    QTest::keyClick(edit(Dialog::RedEdit), Qt::Key_Up);
    EXPECT_EQ(edit(Dialog::RedEdit)->text(), u"13"_s);
    type(Dialog::GreenEdit, u"-5"_s);
    EXPECT_EQ(TxColorRef::green(m_dialog.GetColor()), 0);
}

TEST_F(DlgColorSet, ListButtonsChangeBothListsAndTheEnd)
{
    show({});
    const auto enabled = [this] {
        QString ids;
        for (const int id : {Dialog::InsertButton, Dialog::ApplyButton, Dialog::DeleteButton, Dialog::DeleteAllButton,
                             Dialog::AutoPanelButton})
            ids += button(id)->isEnabled() ? u'1' : u'0';
        return ids;
    };
    EXPECT_EQ(enabled(), u"10000"_s);
    const auto pick = [this](int red) {
        type(Dialog::GreenEdit, u"0"_s);
        type(Dialog::BlueEdit, u"0"_s);
        type(Dialog::RedEdit, QString::number(red));
    };
    pick(1);
    click(Dialog::InsertButton); // into the empty list
    EXPECT_EQ(enabled(), u"00011"_s);
    pick(2);
    click(Dialog::AddButton);
    EXPECT_EQ(edit(Dialog::EndEdit)->text(), u"1"_s);
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Home); // the top row: the last colour
    EXPECT_EQ(list()->GetSelIndex(), 1);
    EXPECT_EQ(enabled(), u"11111"_s);
    pick(3);
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Insert);
    EXPECT_EQ(shown(), (QList<COLORREF>{1, 3, 2}));
    EXPECT_EQ(list()->GetSelIndex(), 2);
    pick(4);
    click(Dialog::ApplyButton);
    EXPECT_EQ(shown(), (QList<COLORREF>{1, 3, 4}));
    list()->SelectIndex(0);
    click(Dialog::DeleteButton);
    EXPECT_EQ(shown(), (QList<COLORREF>{3, 4}));
    EXPECT_EQ(edit(Dialog::EndEdit)->text(), u"1"_s);
    const QPoint onSelected = list()->visualRect(list()->currentIndex()).center();
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, onSelected);
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, onSelected);
    EXPECT_EQ(m_dialog.GetColor(), 3U);
    EXPECT_EQ(kept(), shown());
}

TEST_F(DlgColorSet, PanelGrowsTheWindowBy110AndGoesWithTheLastColour)
{
    show({7, 8});
    const int collapsed = m_dialog.height();
    EXPECT_EQ(button(Dialog::AutoPanelButton)->text(), u"Auto Create Colorset >>"_s);
    click(Dialog::AutoPanelButton);
    EXPECT_EQ(m_dialog.height(), collapsed + 110);
    EXPECT_EQ(button(Dialog::AutoPanelButton)->text(), u"Hide Panel <<"_s);
    EXPECT_EQ(edit(Dialog::EndEdit)->text(), u"1"_s);
    click(Dialog::AutoPanelButton);
    EXPECT_EQ(m_dialog.height(), collapsed);
    click(Dialog::AutoPanelButton);
    list()->SelectIndex(1);
    click(Dialog::DeleteButton);
    EXPECT_EQ(m_dialog.height(), collapsed + 110);
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(m_dialog.height(), collapsed);
    EXPECT_FALSE(button(Dialog::AutoPanelButton)->isEnabled());
    EXPECT_EQ(edit(Dialog::EndEdit)->text(), u"-1"_s);
}

TEST_F(DlgColorSet, PanelFillsThatSubRange)
{
    qputenv("TMPDIR", m_folder.path().toLocal8Bit()); // where the ribbon editor keeps its last ramp
    show({0x01, 0x00, 0x33, 0x14, 0x02});
    click(Dialog::AutoPanelButton);
    type(Dialog::StartEdit, u"1"_s);
    type(Dialog::EndEdit, u"3"_s);
    click(Dialog::SpecificButton);
    EXPECT_EQ(shown(), (QList<COLORREF>{0x01, 0x00, 0x0A, 0x14, 0x02}));

    auto *stock = m_dialog.GetDlgItem<QComboBox>(Dialog::StockCombo);
    CTxColorFolder ramp;
    ramp.MakeStockGradient(3, 0);
    auto *inverse = m_dialog.GetDlgItem<QCheckBox>(Dialog::InverseCheck);
    inverse->click();
    stock->setFocus();
    QTest::keyClick(stock, Qt::Key_Home);
    const QList<COLORREF> reversed = {0x01, ramp.GetAt(2), ramp.GetAt(1), ramp.GetAt(0), 0x02};
    EXPECT_EQ(shown(), reversed);
    click(Dialog::SpecificButton); // from the first colour to the last, which change places
    const QList<COLORREF> before = shown();
    EXPECT_EQ(before.mid(0, 2) + before.mid(3), (QList<COLORREF>{0x01, ramp.GetAt(0), ramp.GetAt(2), 0x02}));

    type(Dialog::EndEdit, u"1"_s); // as the start: nothing happens
    click(Dialog::RandomButton);
    QTest::keyClick(stock, Qt::Key_End);
    EXPECT_EQ(shown(), before);

    // The last item asks for a ramp: white to black as long as none was drawn before.
    type(Dialog::EndEdit, u"3"_s);
    inverse->click();
    QTimer::singleShot(0, &m_dialog, [] {
        auto *ribbon = qobject_cast<CTdDlgRibbon *>(QApplication::activeModalWidget());
        ASSERT_NE(ribbon, nullptr);
        ribbon->accept();
    });
    QTest::keyClick(stock, Qt::Key_Home);
    QTest::keyClick(stock, Qt::Key_End);
    EXPECT_EQ(shown().first(), 0x01U);
    EXPECT_GT(TxColorRef::red(shown()[1]), TxColorRef::red(shown()[2]));
    EXPECT_GT(TxColorRef::red(shown()[2]), TxColorRef::red(shown()[3]));
    EXPECT_EQ(shown().last(), 0x02U);
    const QList<COLORREF> drawn = shown();
    click(Dialog::RandomButton);
    EXPECT_EQ(shown().first(), 0x01U);
    EXPECT_NE(shown().mid(1, 3), drawn.mid(1, 3));
    EXPECT_EQ(shown().last(), 0x02U);
    EXPECT_EQ(kept(), shown());
}

TEST_F(DlgColorSet, OkAndSaveStayWithARangeThatCannotBe)
{
    show({1, 2});
    const std::tuple<QString, QString, int> rows[] = {{u"100"_s, u"200"_s, Dialog::MinimumEdit},
                                                      {u"100"_s, u"nan"_s, Dialog::MinimumEdit},
                                                      {u"1e308"_s, u"-1e308"_s, Dialog::MinimumEdit},
                                                      {u"inf"_s, u"0"_s, Dialog::MaximumEdit}};
    for (const auto &[maximum, minimum, bad] : rows) {
        type(Dialog::MaximumEdit, maximum);
        type(Dialog::MinimumEdit, minimum);
        EXPECT_EQ(messageOf(Dialog::SaveButton), QString());
        EXPECT_EQ(m_dialog.focusWidget(), edit(bad));
        EXPECT_TRUE(edit(bad)->hasSelectedText());
        list()->setFocus();
        QTest::keyClick(&m_dialog, Qt::Key_Return);
        EXPECT_TRUE(m_dialog.isVisible());
        EXPECT_EQ(m_dialog.focusWidget(), edit(bad));
        EXPECT_EQ(edit(bad)->selectedText(), edit(bad)->text());
    }
    EXPECT_EQ(m_chooser.asked, 0);
    click(Dialog::GlobalMaximumButton);
    click(Dialog::GlobalMinimumButton);
    EXPECT_EQ(edit(Dialog::MaximumEdit)->text(), u"8844.43"_s);
    EXPECT_EQ(edit(Dialog::MinimumEdit)->text(), u"-11034"_s);
    list()->setFocus();
    QTest::keyClick(&m_dialog, Qt::Key_Return);
    EXPECT_FALSE(m_dialog.isVisible());
    EXPECT_EQ(m_dialog.GetColorset().GetZCeiling(), 8844.43);
    EXPECT_EQ(m_dialog.GetColorset().GetZFloor(), -11034.0);
    EXPECT_EQ(m_dialog.GetColorset().GetHeight(1), 0.0);
}

TEST_F(DlgColorSet, SavesAndLoadsOrTellsWhyNot)
{
    show({1, 2, 3, 4}, 5, 5);
    EXPECT_TRUE(messageOf(Dialog::SaveButton).startsWith(u"Cannot save the colorset file. Because the minimum"_s));
    type(Dialog::MinimumEdit, u"0,5 x"_s); // the comma ends the number, whatever the language
    type(Dialog::MaximumEdit, u"100m"_s);
    click(Dialog::DeleteAllButton);
    EXPECT_TRUE(messageOf(Dialog::SaveButton).endsWith(u"is null."_s));
    EXPECT_EQ(m_chooser.asked, 0);
    for (int i = 0; i < 4; ++i)
        click(Dialog::AddButton);
    EXPECT_EQ(messageOf(Dialog::SaveButton), QString()) << "cancelled";
    m_chooser.path = m_folder.filePath(u"ramp"_s);
    EXPECT_EQ(messageOf(Dialog::SaveButton), QString());
    const QString path = m_folder.filePath(u"ramp.sct"_s);
    ColorsetTable table;
    ASSERT_TRUE(table.load(path));
    EXPECT_EQ(table.entries.back(), (ColorsetTable::Entry{75, 0x3080E0}));
    m_chooser.path = m_folder.filePath(u"none/ramp"_s);
    EXPECT_EQ(messageOf(Dialog::SaveButton), u"Cannot save the colorset file!"_s);

    m_chooser.path = path;
    type(Dialog::MaximumEdit, u"50"_s);
    EXPECT_EQ(messageOf(Dialog::LoadButton), QString());
    EXPECT_EQ(shown().size(), 3) << "those of 0, 25 and 50";
    m_dialog.SetElevationMode(true);
    click(Dialog::LoadButton);
    list()->SelectIndex(2);
    click(Dialog::LoadButton);
    EXPECT_EQ(list()->GetSelIndex(), -1) << "selected was a colour of the old list";
    EXPECT_EQ(shown().size(), 4);
    EXPECT_EQ(edit(Dialog::MaximumEdit)->text(), u"100"_s);
    EXPECT_EQ(m_dialog.GetIntervalCount(), 3);
    for (const QString &bad : {m_folder.path(), m_folder.filePath(u"missing.sct"_s)}) {
        m_chooser.path = bad;
        EXPECT_EQ(messageOf(Dialog::LoadButton), u"Failed to read the file!\r\nThe file is not colorset file."_s);
    }
    EXPECT_EQ(kept(), shown());
}

TEST_F(DlgColorSet, AsksBeforeAFileThatTheChooserDidNotAskAboutIsReplaced)
{
    show({1, 2});
    QFile file(m_folder.filePath(u"x.txt.sct"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
    file.close();
    for (const bool isYes : {false, true}) {
        m_answer = isYes ? QMessageBox::Yes : QMessageBox::No;
        m_chooser.path = m_folder.filePath(u"x.txt"_s);
        EXPECT_EQ(messageOf(Dialog::SaveButton), u"The file x.txt.sct is there already. Replace it?"_s);
        EXPECT_EQ(file.size(), isYes ? 283 + 2 * 16 : 3);
    }
    m_chooser.path = file.fileName(); // the chooser asked
    EXPECT_EQ(messageOf(Dialog::SaveButton), QString());
}

TEST_F(DlgColorSet, EnterPushesTheButtonThatHasTheFocusAndTheWheelWantsIt)
{
    show({1, 2});
    button(Dialog::AddButton)->setFocus();
    QTest::keyClick(button(Dialog::AddButton), Qt::Key_Return);
    EXPECT_EQ(shown().size(), 3);
    QWidget *const red = edit(Dialog::RedEdit)->parentWidget();
    for (const bool hasFocus : {false, true}) {
        if (hasFocus)
            red->setFocus();
        const QPointF middle = red->rect().center();
        QWheelEvent event(middle, red->mapToGlobal(middle), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(red, &event);
        EXPECT_EQ(TxColorRef::red(m_dialog.GetColor()), hasFocus ? 223 : 224);
    }
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Return);
    EXPECT_FALSE(m_dialog.isVisible()) << "elsewhere it is OK";
}

TEST_F(DlgColorSet, SavingOverAReadOnlyFileDoesNothingVisible)
{
    show({1, 2});
    const QString path = m_folder.filePath(u"ramp.sct"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
    file.close();
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner));
    m_chooser.path = path;
    EXPECT_EQ(messageOf(Dialog::SaveButton), QString());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "old");
}

} // namespace
