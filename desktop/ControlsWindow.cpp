#include "ControlsWindow.h"

#include "ControlPages.h"
#include "basic/TdHostMessage.h"
#include "common/TdModule.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

/// A line of text that the user can select and copy, and a screen reader finds under @p name.
QLabel *makeLine(const QString &name)
{
    auto *line = new QLabel;
    line->setTextFormat(Qt::PlainText);
    QSizePolicy policy = line->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored); // a long word must not widen the window
    line->setSizePolicy(policy);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    line->setFocusPolicy(Qt::ClickFocus);
    line->setWordWrap(true); // paths may be long
    line->setAccessibleName(name);
    return line;
}

/// True when Tab may stop at @p widget. What hands the focus on is no stop of its own.
bool isStop(const QWidget *widget)
{
    return widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy() && widget->isEnabled() && widget->isVisible();
}

} // namespace

ControlsWindow::ControlsWindow(QWidget *parent)
    : QDialog(parent), m_list(new QListWidget), m_title(new QLabel), m_classes(makeLine(tr("Classes"))),
      m_what(new QLabel), m_pages(new QStackedWidget), m_value(makeLine(tr("Value"))),
      m_command(makeLine(tr("Command")))
{
    setWindowTitle(tr("Controls"));
    m_list->setAccessibleName(tr("Controls"));
    for (const ControlPage &page : controlPages()) {
        m_list->addItem(ControlPages::text(page.title));
        m_pages->addWidget(new QWidget); // the page takes its place when it first shows
        m_values.append(QString());
    }
    m_list->setFixedWidth(m_list->sizeHintForColumn(0) + 30);
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    m_title->setFont(font);
    m_classes->setWordWrap(false);
    m_classes->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    m_classes->setForegroundRole(QPalette::PlaceholderText);
    m_what->setWordWrap(true);
    m_what->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_what->setMinimumHeight(3 * fontMetrics().lineSpacing()); // pages with less to say stand as high
    m_command->setText(tr("none yet"));

    auto *right = new QVBoxLayout;
    auto *head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(m_classes, 0, Qt::AlignBottom);
    right->addLayout(head);
    right->addWidget(m_what);
    right->addSpacing(6);
    right->addWidget(m_pages, 1);
    auto *lines = new QFormLayout;
    lines->addRow(tr("Value:"), m_value);
    lines->addRow(tr("Last command:"), m_command);
    for (QWidget *line : {m_value, m_command}) // their names stand beside the first of several lines
        static_cast<QLabel *>(lines->labelForField(line))->setAlignment(Qt::AlignTop);
    right->addLayout(lines);
    auto *top = new QHBoxLayout;
    top->addWidget(m_list);
    top->addSpacing(9);
    top->addLayout(right, 1);
    auto *box = new QDialogButtonBox(QDialogButtonBox::Close);
    m_close = box->button(QDialogButtonBox::Close);
    m_close->setAutoDefault(false); // Enter belongs to the controls
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addWidget(box);
    resize(660, 500);

    connect(m_list, &QListWidget::currentRowChanged, this, &ControlsWindow::turnTo);
    m_list->setCurrentRow(0);
    // The controls tell the main window what was chosen.
    if (QWidget *host = CTdModule::GetMainWnd())
        host->installEventFilter(this);
}

ControlsWindow::~ControlsWindow()
{
    delete m_pages; // controls may tell of a last change while they go
}

int ControlsWindow::pageCount() const
{
    return m_list->count();
}

void ControlsWindow::showPage(int index)
{
    m_list->setCurrentRow(index);
}

QWidget *ControlsWindow::page() const
{
    return m_pages->currentWidget();
}

QString ControlsWindow::valueText() const
{
    return m_value->text();
}

QString ControlsWindow::commandText() const
{
    return m_command->text();
}

void ControlsWindow::turnTo(int index)
{
    if (index < 0 || index >= m_pages->count())
        return;
    const ControlPage &page = controlPages()[static_cast<size_t>(index)];
    QWidget *place = m_pages->widget(index);
    if (!place->layout()) {
        auto *layout = new QVBoxLayout(place);
        layout->setContentsMargins(0, 0, 0, 0);
        QWidget *content = page.make(place, [this, index](const QString &value) {
            constexpr qsizetype most = 300; // whatever was pasted, a few lines tell of it
            m_values[index] = value.size() > most ? value.left(most) + QChar(0x2026) : value;
            if (index == m_list->currentRow())
                m_value->setText(m_values.at(index));
        });
        if (content->layout())
            content->layout()->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(content);
    }
    m_title->setText(ControlPages::text(page.title));
    m_classes->setText(QString::fromLatin1(page.classes).replace(u' ', QStringLiteral(", ")));
    m_what->setText(ControlPages::text(page.what));
    m_value->setText(m_values.at(index));
    m_pages->setCurrentIndex(index);
}

void ControlsWindow::noteCommand(QEvent *event)
{
    const CTdHostMessage *message = CTdHostMessage::from(event);
    if (!message || message->message() != CTdHostMessage::Command)
        return;
    const qint64 number = message->number();
    if (number >= ControlPages::SliderCommand && number <= ControlPages::LastCommand)
        m_command->setText(tr("%1, with the value %2").arg(number).arg(m_values.at(m_list->currentRow())));
}

bool ControlsWindow::event(QEvent *event)
{
    noteCommand(event); // what a toolbar's button tells its own window
    return QDialog::event(event);
}

bool ControlsWindow::eventFilter(QObject *watched, QEvent *event)
{
    noteCommand(event);
    return QDialog::eventFilter(watched, event);
}

bool ControlsWindow::focusNextPrevChild(bool next)
{
    // The list, the page, the button. Pages are made when they first show, so they stand last in Qt's own order, which
    // QWidget::setTabOrder() cannot mend: it loses widgets of controls that hand the focus on to a part of them.
    QList<QWidget *> stops{m_list};
    const QWidget *page = m_pages->currentWidget();
    for (QWidget *widget = page->nextInFocusChain(); widget != page; widget = widget->nextInFocusChain()) {
        if (page->isAncestorOf(widget) && isStop(widget))
            stops.append(widget);
    }
    stops.append(m_close);
    const qsizetype at = stops.indexOf(focusWidget());
    if (at < 0)
        return QDialog::focusNextPrevChild(next);
    stops[(at + (next ? 1 : stops.size() - 1)) % stops.size()]->setFocus(next ? Qt::TabFocusReason
                                                                              : Qt::BacktabFocusReason);
    return true;
}
