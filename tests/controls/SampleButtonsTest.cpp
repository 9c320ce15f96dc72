#include "common/TdColorChooser.h"
#include "common/TdCommMethods.h"
#include "controls/TdColorButton.h"
#include "controls/TdLabelButton.h"
#include "controls/TdStyleButton.h"

#include <QApplication>
#include <QDialog>
#include <QFontDialog>
#include <QPainter>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

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

TEST(StyleButton, DrawsItsSampleInsideAndLeavesThePainterAsItWas)
{
    CTdStyleButton button;
    button.resize(120, 40);
    button.SetSample([](QPainter &painter, const QRect &) {
        painter.setOpacity(1.0);
        painter.fillRect(-1000, -1000, 3000, 3000, Qt::blue);
    });
    const QImage shown = button.grab().toImage();
    EXPECT_EQ(shown.pixelColor(60, 20), QColor(Qt::blue));
    EXPECT_NE(shown.pixelColor(2, 20), QColor(Qt::blue));
    button.SetSample({});
    EXPECT_EQ(button.grab().toImage().pixelColor(60, 20), QColor(Qt::white));
}

} // namespace
