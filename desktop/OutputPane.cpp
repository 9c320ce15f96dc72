#include "OutputPane.h"

#include "Icons.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QPlainTextEdit>
#include <QToolBar>

OutputPane::OutputPane(QWidget *parent) : QWidget(parent), m_edit(new QPlainTextEdit)
{
    m_edit->setReadOnly(true);
    m_edit->setMaximumBlockCount(10000);
    m_edit->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_edit->setFrameShape(QFrame::NoFrame);
    m_edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_edit->setTabStopDistance(m_edit->fontMetrics().horizontalAdvance(QLatin1Char('x')) * 4);
    m_edit->setPlaceholderText(tr("Messages appear here."));
    m_edit->setAccessibleName(tr("Output"));
    m_edit->setContextMenuPolicy(Qt::NoContextMenu);

    m_copy = new QAction(Icons::action(QStringLiteral("copy")), tr("&Copy"), this);
    m_copy->setToolTip(tr("Copy the selection, or everything when nothing is selected"));
    m_clear = new QAction(Icons::action(QStringLiteral("clear")), tr("C&lear"), this);
    m_clear->setToolTip(tr("Remove all messages"));
    connect(m_copy, &QAction::triggered, this, &OutputPane::copy);
    connect(m_clear, &QAction::triggered, this, &OutputPane::clear);

    auto *bar = new QToolBar;
    bar->setOrientation(Qt::Vertical);
    bar->setIconSize(QSize(16, 16));
    bar->addAction(m_copy);
    bar->addAction(m_clear);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_edit, 1);
    layout->addWidget(bar);
    setFocusProxy(m_edit);
    connect(m_edit, &QPlainTextEdit::textChanged, this, &OutputPane::updateActions);
    updateActions();
}

void OutputPane::print(const QString &text)
{
    m_edit->appendPlainText(text);
}

QString OutputPane::text() const
{
    return m_edit->toPlainText();
}

void OutputPane::clear()
{
    m_edit->clear();
}

void OutputPane::copy()
{
    const QString selected = m_edit->textCursor().selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    QGuiApplication::clipboard()->setText(selected.isEmpty() ? text() : selected);
}

void OutputPane::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.addAction(m_copy);
    QAction *all = menu.addAction(tr("Select &All"));
    all->setEnabled(m_clear->isEnabled());
    connect(all, &QAction::triggered, m_edit, &QPlainTextEdit::selectAll);
    menu.addSeparator();
    menu.addAction(m_clear);
    menu.exec(event->globalPos());
}

void OutputPane::updateActions()
{
    const bool any = !m_edit->document()->isEmpty();
    m_copy->setEnabled(any);
    m_clear->setEnabled(any);
}
