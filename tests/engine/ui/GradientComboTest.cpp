#include "engine/symbol/TxColorFolder.h"
#include "engine/ui/TxComboBoxGradientColors.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

/// How many colours a picture of the control has, which is many when it shows a ramp.
qsizetype colorsOf(QWidget &widget)
{
    const QImage image = widget.grab().toImage();
    QSet<QRgb> colors;
    for (int x = 0; x < image.width(); ++x)
        colors.insert(image.pixel(x, image.height() / 2));
    return colors.size();
}

void turnWheel(QWidget &widget)
{
    QWheelEvent event(QPointF(5, 5), widget.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

class GradientCombo : public testing::Test
{
protected:
    GradientCombo()
    {
        QApplication::setKeyboardInputInterval(100);
        combo.InitContent();
        combo.show();
    }
    ~GradientCombo() override { QApplication::setKeyboardInputInterval(m_interval); }

    CTxComboBoxGradientColors combo;

private:
    const int m_interval = QApplication::keyboardInputInterval();
};

TEST_F(GradientCombo, HoldsEveryStockRampAndCustomLast)
{
    QSignalSpy changes(&combo, &QComboBox::currentIndexChanged);
    combo.InitContent();
    EXPECT_EQ(changes.count(), 0);
    const qint32 ramps = CTxColorFolder::GetStockGradientCount();
    ASSERT_EQ(combo.count(), ramps + 1) << "filled twice, held once";
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_EQ(combo.GetStockGradient(), -1);
    for (qint32 i = 0; i < ramps; ++i) {
        EXPECT_EQ(combo.itemText(i), CTxColorFolder::GetStockGradientName(i));
        EXPECT_FALSE(combo.itemData(i, Qt::AccessibleDescriptionRole).toString().isEmpty());
    }
    EXPECT_EQ(combo.itemText(ramps), QStringLiteral("Custom…"));
    combo.setCurrentIndex(ramps);
    EXPECT_TRUE(combo.IsCustom() && combo.GetStockGradient() == -1);
    combo.setCurrentIndex(3);
    EXPECT_TRUE(!combo.IsCustom() && combo.GetStockGradient() == 3);
}

TEST_F(GradientCombo, ShowsTheRampInTheClosedFieldAndPalerWhenDisabled)
{
    const qsizetype empty = colorsOf(combo);
    combo.setCurrentIndex(2);
    EXPECT_GT(colorsOf(combo), empty + 50);
    const QImage enabled = combo.grab().toImage();
    combo.setEnabled(false);
    EXPECT_NE(combo.grab().toImage(), enabled);
    EXPECT_GT(colorsOf(combo), empty + 30);
}

TEST_F(GradientCombo, TypingGoesToNames)
{
    const struct
    {
        const char *typed;
        const char *found;
    } rows[] = {
        {"vir", "Viridis"},
        {"b", "Blue to Yellow"},
        {"bb", "Blues"},
        {"MAG", "Magma"},
        {"blue to", "Blue to Yellow"},
        {"soft", "Hypsometric with Sea, Soft"},
        {"ndvi", "Vegetation (NDVI)"},
        {"q7", "Grey"},
    };
    for (const auto &[typed, found] : rows) {
        for (const bool inList : {false, true}) {
            combo.setCurrentIndex(0);
            QSignalSpy activations(&combo, &QComboBox::activated);
            if (inList)
                combo.showPopup();
            QTest::qWait(inList ? 0 : QApplication::keyboardInputInterval() + 20); // a pause begins a new search
            QTest::keyClicks(inList ? combo.view() : static_cast<QWidget *>(&combo), QString::fromLatin1(typed));
            if (inList) {
                EXPECT_EQ(combo.view()->currentIndex().data().toString().toStdString(), found) << typed;
                combo.hidePopup();
                EXPECT_EQ(combo.currentIndex(), 0) << "nothing is chosen yet";
            } else {
                EXPECT_EQ(combo.currentText().toStdString(), found) << typed;
                EXPECT_EQ(activations.isEmpty(), combo.currentIndex() == 0) << typed;
            }
        }
    }
}

TEST_F(GradientCombo, TheWheelChangesNothingWithoutTheFocus)
{
    combo.setCurrentIndex(5);
    combo.clearFocus();
    turnWheel(combo);
    EXPECT_EQ(combo.currentIndex(), 5);
    EXPECT_EQ(combo.focusPolicy(), Qt::StrongFocus) << "the wheel gives no focus";
}

} // namespace
