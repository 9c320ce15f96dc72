#include "controls/TdTabOrder.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class TabOrder : public testing::Test
{
protected:
    /// A control called @p name, made in any order but read by its place.
    template<class Control>
    Control *add(const char *name, const QRect &place, QWidget *parent)
    {
        auto *control = new Control(parent);
        control->setObjectName(QString::fromLatin1(name));
        control->setGeometry(place);
        return control;
    }
    std::string order(QWidget *window) const
    {
        QString names;
        for (const QWidget *control : CTdTabOrder::Collate(window))
            names += control->objectName();
        return names.toStdString();
    }
};

TEST_F(TabOrder, RowsFromTheTopAndGroupsAsAWhole)
{
    QWidget window;
    auto *right = add<QGroupBox>("", {200, 40, 150, 100}, &window);
    add<QLineEdit>("F", {10, 60, 60, 20}, right);
    add<QLineEdit>("E", {10, 20, 60, 20}, right);
    auto *left = add<QGroupBox>("", {10, 42, 150, 100}, &window);
    add<QSpinBox>("D", {10, 62, 60, 20}, left);
    add<QLineEdit>("C", {10, 20, 60, 20}, left);
    add<QPushButton>("G", {10, 160, 60, 20}, &window);
    add<QLineEdit>("B", {100, 8, 60, 20}, &window); // a little higher than its neighbour: the same row
    add<QLineEdit>("A", {10, 10, 60, 20}, &window);
    add<QLineEdit>("", {300, 10, 60, 20}, &window)->setFocusPolicy(Qt::NoFocus);
    EXPECT_EQ(order(&window), "ABCDEFG");
    window.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(order(&window), "BAEFCDG");
    EXPECT_TRUE(CTdTabOrder::Collate(nullptr).isEmpty());
}

TEST_F(TabOrder, TabWalksInThatOrder)
{
    QWidget window;
    auto *pages = add<QTabWidget>("", {10, 50, 200, 100}, &window);
    auto *page = new QWidget;
    add<QLineEdit>("C", {10, 10, 60, 20}, page);
    pages->addTab(page, QStringLiteral("page"));
    add<QPushButton>("D", {10, 160, 60, 20}, &window);
    add<QLineEdit>("B", {100, 10, 60, 20}, &window);
    auto *first = add<QSpinBox>("A", {10, 10, 60, 20}, &window);
    window.show();                             // lays the pages out
    EXPECT_EQ(CTdTabOrder::Apply(&window), 5); // the bar of the pages is one of them
    window.activateWindow();
    first->setFocus();
    std::string walked;
    for (int i = 0; i < 5; ++i) {
        walked += window.focusWidget()->objectName().left(1).toStdString();
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(walked, "ABqCD"); // q: Qt's name of the bar
}

} // namespace
