#include "DesktopFixture.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QToolBar>

namespace {

class Menus : public WindowFixture
{
protected:
    /// The letter behind the "&" of a text, 0 when there is none.
    static QChar mnemonic(const QString &text)
    {
        for (qsizetype i = 0; i + 1 < text.size(); ++i) {
            if (text[i] != QLatin1Char('&'))
                continue;
            if (text[i + 1] != QLatin1Char('&'))
                return text[i + 1].toLower();
            ++i;
        }
        return {};
    }

    static void checkMnemonics(const QList<QAction *> &actions, const QString &where)
    {
        QSet<QChar> seen;
        for (const QAction *action : actions) {
            if (action->isSeparator())
                continue;
            const QChar letter = mnemonic(action->text());
            EXPECT_FALSE(letter.isNull()) << where.toStdString() << ": " << action->text().toStdString();
            EXPECT_FALSE(seen.contains(letter)) << where.toStdString() << ": " << action->text().toStdString();
            seen << letter;
        }
    }
};

TEST_F(Menus, EveryMenuHasItsOwnMnemonics)
{
    checkMnemonics(window->menuBar()->actions(), u"menu bar"_s);
    for (const QAction *menu : window->menuBar()->actions())
        checkMnemonics(menu->menu()->actions(), menu->text());
}

TEST_F(Menus, EveryCommandSaysWhatItDoes)
{
    QSet<QString> keys;
    QSet<const QAction *> seen;
    for (const QAction *menu : window->menuBar()->actions()) {
        for (const QAction *action : menu->menu()->actions()) {
            if (action->isSeparator() || action->menu() || seen.contains(action))
                continue;
            seen << action;
            EXPECT_FALSE(action->statusTip().isEmpty()) << action->text().toStdString();
            for (const QKeySequence &key : action->shortcuts()) {
                EXPECT_FALSE(keys.contains(key.toString())) << key.toString().toStdString() << " has two meanings";
                keys << key.toString();
            }
        }
    }
    EXPECT_GE(seen.size(), 25);
}

TEST_F(Menus, EveryToolButtonHasAPicture)
{
    const QToolBar *bar = window->findChild<QToolBar *>(u"ToolBar"_s);
    ASSERT_NE(bar, nullptr);
    for (const QAction *action : bar->actions()) {
        EXPECT_TRUE(action->isSeparator() || !action->icon().isNull()) << action->text().toStdString();
    }
}

TEST_F(Menus, EverythingCanBeNamedByAScreenReader)
{
    window->openFiles({towns()});
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus || widget->focusProxy())
            continue;
        const bool named = !widget->accessibleName().isEmpty() || !widget->windowTitle().isEmpty() ||
                           widget->property("text").isValid() || !widget->toolTip().isEmpty();
        EXPECT_TRUE(named) << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
}

} // namespace
