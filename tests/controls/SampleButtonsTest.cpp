#include "common/TdColorChooser.h"
#include "common/TdCommMethods.h"
#include "controls/TdColorButton.h"
#include "controls/TdLabelButton.h"
#include "controls/TdStyleButton.h"
#include "controls/TdStyleDialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFontDialog>
#include <QPointer>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

/// Answers with green, and keeps what it was asked.
class GreenChooser : public CTdColorChooser
{
public:
    GreenChooser() { SetCurrent(this); }
    ~GreenChooser() override { SetCurrent(nullptr); }
    std::optional<COLORREF> ChooseColor(QWidget *, COLORREF initial, const QString &) override
    {
        asked = initial;
        return TxColorRef::make(0, 255, 0);
    }
    COLORREF asked = 0;
};

class ColorButton : public testing::Test
{
protected:
    ColorButton()
    {
        QObject::connect(&m_button, &CTdColorButton::colorChosen, [this] { ++m_told; });
        m_button.move(100, 100);
        m_button.show();
        m_button.SetColor(CTdCommMethods::GetDefaultColor(0));
    }
    /// Opens the drop-down and sends keys to what has its focus.
    void press(const QList<Qt::Key> &keys)
    {
        QTest::keyClick(&m_button, Qt::Key_Down);
        QWidget *popup = QApplication::activePopupWidget();
        ASSERT_TRUE(popup);
        EXPECT_TRUE(m_button.screen()->availableGeometry().contains(popup->geometry()));
        for (const Qt::Key key : keys) {
            if (popup->isVisible())
                QTest::keyClick(popup->focusWidget() ? popup->focusWidget() : popup, key);
        }
        EXPECT_FALSE(popup->isVisible());
    }

    CTdColorButton m_button;
    int m_told = 0;
};

TEST_F(ColorButton, ASecondClickClosesTheDropDown)
{
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        m_button.setLayoutDirection(direction);
        const auto click = [this] { // as the platform sends it: to the window, which finds out who hears of it
            QTest::mouseClick(m_button.windowHandle(), Qt::LeftButton, {}, m_button.rect().center());
            QCoreApplication::processEvents();
        };
        for (const bool isOpen : {true, false, true, false}) {
            click();
            EXPECT_EQ(QApplication::activePopupWidget() != nullptr, isOpen);
        }
    }
    EXPECT_EQ(m_told, 0);
}

TEST_F(ColorButton, ArrowKeysWalkTheTableOfDefaultColors)
{
    const struct
    {
        QList<Qt::Key> keys;
        int color;
    } rows[] = {
        {{Qt::Key_Right, Qt::Key_Return}, 1},
        {{Qt::Key_Down, Qt::Key_Space}, 13},
        {{Qt::Key_End, Qt::Key_Right, Qt::Key_Down, Qt::Key_Enter}, 119},
        {{Qt::Key_Up, Qt::Key_Left, Qt::Key_Return}, 106},
        {{Qt::Key_Home, Qt::Key_Escape}, 106},
        {{Qt::Key_Return}, 106}, // the cursor stands on the colour that is there
    };
    for (const auto &row : rows) {
        press(row.keys);
        EXPECT_EQ(m_button.GetColor(), CTdCommMethods::GetDefaultColor(row.color)) << row.color;
    }
    EXPECT_EQ(m_told, 4);
}

TEST_F(ColorButton, AllColorsAndNoColorAreButtonsOfTheDropDown)
{
    const GreenChooser chooser;
    press({Qt::Key_Tab, Qt::Key_Return});
    EXPECT_EQ(chooser.asked, CTdCommMethods::GetDefaultColor(0));
    EXPECT_EQ(m_button.GetColor(), TxColorRef::make(0, 255, 0));
    m_button.SetMayBeNone(true);
    press({Qt::Key_Backtab, Qt::Key_Return});
    EXPECT_EQ(m_button.GetColor(), std::nullopt);
    EXPECT_EQ(m_told, 2);
    m_button.SetColor(0xFF0000FF); // silent; the high byte is no part of a colour
    EXPECT_EQ(m_button.GetColor(), TxColorRef::make(255, 0, 0));
    EXPECT_EQ(m_told, 2);
    EXPECT_EQ(m_button.grab().toImage().pixelColor(m_button.rect().center()), QColor(Qt::red));
}

TEST(LabelButton, ShowsItsFontAndAsksForAnother)
{
    CTdLabelButton button;
    button.SetLabelFont(QFont(QStringLiteral("DejaVu Sans"), 72)); // is shown smaller, not torn apart
    button.SetLabelColor(TxColorRef::make(255, 0, 0));
    EXPECT_LT(button.sizeHint().height(), 60);
    button.show();
    const QSignalSpy chosen(&button, &CTdLabelButton::labelFontChosen);
    for (const bool accepted : {false, true}) {
        QTimer::singleShot(0, [accepted] {
            auto *dialog = qobject_cast<QFontDialog *>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            dialog->setCurrentFont(QFont(QStringLiteral("DejaVu Sans"), 20));
            accepted ? dialog->accept() : dialog->reject();
        });
        QTest::keyClick(&button, Qt::Key_Space);
        EXPECT_EQ(button.GetLabelFont().pointSize(), accepted ? 20 : 72);
    }
    EXPECT_EQ(chosen.size(), 1);
}

/// Presses a style button, and lets @p act on the dialog that opens.
template<class Act>
void actInDialog(CTdStyleButton &button, const Act &act)
{
    QTimer::singleShot(0, [act] {
        const QPointer<CTdStyleDialog> dialog = qobject_cast<CTdStyleDialog *>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        act(*dialog);
        if (dialog && dialog->isVisible())
            dialog->reject();
    });
    QTest::keyClick(&button, Qt::Key_Space);
}

TEST(StyleButton, StylesAreChosenByNameOrArrowsAndColorsStay)
{
    const struct
    {
        TdStyle::Kind kind;
        const char *typed;
        QList<Qt::Key> keys;
        qint32 lineStyle, fillStyle, symbolStyle;
        TxGradientKind gradient;
        int told;
    } rows[] = {
        {TdStyle::Line, "rail", {Qt::Key_Right, Qt::Key_Return}, 13, 0, 0, TxGradientKind::None, 1},
        {TdStyle::Line, "rail", {Qt::Key_Escape}, 0, 0, 0, TxGradientKind::None, 0},
        {TdStyle::Line, "", {Qt::Key_Left, Qt::Key_Return}, 0, 0, 0, TxGradientKind::None, 0},
        {TdStyle::Fill, "brick", {Qt::Key_Enter}, 0, 17, 0, TxGradientKind::None, 1},
        {TdStyle::Fill, "", {Qt::Key_End, Qt::Key_Left, Qt::Key_Return}, 0, 0, 0, TxGradientKind::Radial, 1},
        {TdStyle::Symbol, "", {Qt::Key_Down, Qt::Key_Right, Qt::Key_Return}, 0, 0, 9, TxGradientKind::None, 1},
    };
    for (const auto &row : rows) {
        CTdStyleButton button(row.kind);
        CTxGeoStyle style;
        style.lineColor = QColor(200, 0, 0, 90);
        style.lineWidth = 2.123; // finer than the field shows
        button.SetStyle(style);
        button.show();
        const QSignalSpy chosen(&button, &CTdStyleButton::styleChosen);
        actInDialog(button, [&row](CTdStyleDialog &dialog) {
            EXPECT_TRUE(dialog.rect().contains(dialog.childrenRect()));
            QTest::keyClicks(dialog.focusWidget(), QString::fromLatin1(row.typed));
            for (const Qt::Key key : row.keys)
                QTest::keyClick(dialog.focusWidget(), key);
        });
        style.lineStyle = row.lineStyle;
        style.fillStyle = row.fillStyle;
        style.symbolStyle = row.symbolStyle;
        style.fillGradient = row.gradient;
        EXPECT_TRUE(button.GetStyle() == style) << button.GetStyle().ToXML().toStdString();
        EXPECT_EQ(chosen.size(), row.told);
    }
}

TEST(StyleButton, FieldsChangeWhatTheyNameAlone)
{
    CTdStyleButton button(TdStyle::Fill);
    CTxGeoStyle style;
    style.fillBackColor = QColor(0, 0, 255, 0); // none
    style.fillStyle = 9999;                     // drawn as the first
    button.SetStyle(style);
    button.show();
    actInDialog(button, [](CTdStyleDialog &dialog) {
        QSignalSpy changed(&dialog, &CTdStyleDialog::styleChanged);
        auto *opacity = dialog.findChild<QSpinBox *>();
        opacity->setFocus();
        opacity->selectAll();
        QTest::keyClicks(opacity, QStringLiteral("40"));
        EXPECT_EQ(dialog.GetStyle().fillColor.alpha(), 102);
        EXPECT_EQ(dialog.GetStyle().fillBackColor.alpha(), 0); // none stays none
        const QList<CTdColorButton *> colors = dialog.findChildren<CTdColorButton *>();
        ASSERT_EQ(colors.size(), 2);
        EXPECT_EQ(colors.last()->GetColor(), std::nullopt);
        Q_EMIT colors.last()->colorChosen(TxColorRef::make(1, 2, 3));
        EXPECT_EQ(dialog.GetStyle().fillBackColor, QColor(1, 2, 3, 102));
        EXPECT_FALSE(dialog.findChild<QCheckBox *>()->isEnabled()); // there is no gradient
        auto *size = dialog.findChild<QDoubleSpinBox *>();
        opacity->setFocus();
        QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(size, &wheel);
        EXPECT_EQ(dialog.GetStyle().fillSize, 8.0);
        EXPECT_EQ(dialog.GetStyle().fillStyle, 9999);
        EXPECT_GT(changed.size(), 0);
        dialog.accept();
    });
    EXPECT_EQ(button.GetStyle().fillColor.alpha(), 102);
}

TEST(StyleButton, WindowMayGoWhileItsDialogIsOpen)
{
    auto *window = new QWidget;
    auto *button = new CTdStyleButton(window);
    window->show();
    actInDialog(*button, [window](CTdStyleDialog &dialog) {
        dialog.accept();
        delete window;
    });
    EXPECT_FALSE(QApplication::activeModalWidget());
}

} // namespace
