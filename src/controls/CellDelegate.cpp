#include "controls/CellDelegate.h"

#include "common/TdModule.h"
#include "controls/ChoiceEditor.h"
#include "controls/DrawnText.h"
#include "controls/ReportModel.h"
#include "controls/TdMouseHook.h"
#include "res/StringId.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScopeGuard>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <limits>

namespace {

constexpr int messageTime = 8000; // milliseconds
constexpr int darkBelow = 128;    // lightness, of 255
constexpr qreal focusOpacity = 0.6;
constexpr int editorMargin = 8; // pixels that an editor wants above a line of text

} // namespace

CellDelegate::CellDelegate(ReportModel *model, QObject *parent) : IconPlateDelegate(parent), m_model(model) {}

CellDelegate::~CellDelegate() = default;

QWidget *CellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const
{
    const ReportModel::Column *column = m_model->column(index.column());
    if (!column)
        return nullptr;
    auto *self = const_cast<CellDelegate *>(this);
    QWidget *editor = nullptr;
    if (column->editor.kind == CellEditor::Choice) {
        auto *choice = new ChoiceEditor(column->editor.choices, parent);
        connect(choice, &ChoiceEditor::picked, self, [self, choice] { Q_EMIT self->closeEditor(choice); });
        connect(choice, &QComboBox::currentIndexChanged, self, &CellDelegate::withdrawMessage);
        editor = choice;
    } else if (column->editor.kind == CellEditor::Text) {
        auto *line = new QLineEdit(parent);
        line->setMaxLength(std::numeric_limits<int>::max()); // or an edit would cut a long text off
        line->setAlignment(column->alignment);
        line->setValidator(column->editor.typed);
        connect(line, &QLineEdit::textEdited, self, &CellDelegate::withdrawMessage);
        editor = line;
    } else {
        return nullptr;
    }
    editor->setAccessibleName(column->title);
    editor->setAutoFillBackground(true); // or the cell shows through
    // What is clicked elsewhere need not take the focus: a Save on a toolbar must find the entry in the cell. The list
    // itself ends an entry at clicks on its own cells.
    auto *hook = new CTdMouseHook(editor);
    hook->SetInside({editor, parent->parentWidget()});
    connect(hook, &CTdMouseHook::pressed, self, [self, editor] { Q_EMIT self->closeEditor(editor); });
    m_editor = editor;
    m_cell = index;
    m_begun.clear();
    return editor;
}

void CellDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const QString text = index.data(Qt::EditRole).toString();
    if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setText(text);
    else if (auto *choice = qobject_cast<QComboBox *>(editor))
        choice->setCurrentIndex(choice->findText(text)); // none when the cell holds no choice
    m_begun = entry();
}

QString CellDelegate::entry() const
{
    if (const auto *line = qobject_cast<const QLineEdit *>(m_editor))
        return line->text();
    const auto *choice = qobject_cast<const QComboBox *>(m_editor);
    return choice ? choice->currentText() : QString();
}

CellVerdict CellDelegate::judge(const CellEditor &settings, const QString &text) const
{
    QString fixed = text;
    if (settings.typed) {
        int position = 0;
        if (settings.typed->validate(fixed, position) != QValidator::Acceptable) {
            settings.typed->fixup(fixed);
            if (settings.typed->validate(fixed, position) != QValidator::Acceptable) {
                const CellVerdict why = settings.validator ? settings.validator(m_cell.row(), text) : CellVerdict();
                return CellVerdict::Refuse(why.accepted ? QString() : why.text);
            }
        }
    }
    return settings.validator ? settings.validator(m_cell.row(), fixed) : CellVerdict::Accept(fixed);
}

bool CellDelegate::settle()
{
    const ReportModel::Column *column = m_model->column(m_cell.column());
    if (!m_editor || !column || m_isSettling)
        return !m_isSettling;
    const QString text = entry();
    if (text == m_begun)
        return true;
    // The validator, and who is told of the edit, may open another editor, change the rows or delete the list.
    const QPointer<CellDelegate> alive(this);
    const QPointer<QWidget> editor = m_editor;
    const auto settled = qScopeGuard([&] {
        if (alive)
            m_isSettling = false;
    });
    m_isSettling = true;
    const CellEditor settings = column->editor;
    const CellVerdict verdict = judge(settings, text);
    if (!alive || !editor || editor != m_editor || !m_cell.isValid())
        return true; // the cell is gone
    if (!verdict.accepted) {
        refuse(verdict.text.isEmpty() ? CTdModule::LoadString(TdStringId::EntryNotValid) : verdict.text);
        return false;
    }
    m_begun = text;
    m_model->setData(m_cell, verdict.text, Qt::EditRole);
    return true;
}

void CellDelegate::forget()
{
    m_editor = nullptr;
    m_cell = QModelIndex();
    QToolTip::hideText();
}

void CellDelegate::setModelData(QWidget *, QAbstractItemModel *, const QModelIndex &) const
{
    // The list settles an entry when it closes the editor: doing so here as well would judge it twice.
}

void CellDelegate::refuse(const QString &message)
{
    m_editor->setToolTip(message);
    m_editor->setAccessibleDescription(message);
    if (auto *line = qobject_cast<QLineEdit *>(m_editor); line && line->actions().isEmpty()) {
        const QIcon warning = line->style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, line);
        line->addAction(warning, QLineEdit::TrailingPosition);
    }
    for (QAction *action : m_editor->actions())
        action->setToolTip(message);
    showMessage();
}

void CellDelegate::showMessage() const
{
    if (m_editor && !m_editor->toolTip().isEmpty())
        QToolTip::showText(m_editor->mapToGlobal(QPoint(0, m_editor->height() - 12)), m_editor->toolTip(), m_editor, {},
                           messageTime);
}

void CellDelegate::withdrawMessage()
{
    if (!m_editor || m_editor->toolTip().isEmpty())
        return;
    m_editor->setToolTip({});
    m_editor->setAccessibleDescription({});
    const QList<QAction *> actions = m_editor->actions();
    qDeleteAll(actions);
    QToolTip::hideText();
}

void CellDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option, const QModelIndex &) const
{
    editor->setGeometry(option.rect);
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width(), std::max(size.height(), option.fontMetrics.height() + editorMargin)};
}

QString CellDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    return QStyledItemDelegate::displayText(drawnText(value.toString()), locale);
}

void CellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // A box that the user cannot toggle looks like it.
    if (option->features & QStyleOptionViewItem::HasCheckIndicator && !(index.flags() & Qt::ItemIsUserCheckable))
        option->state &= ~QStyle::State_Enabled;
    // Styles take the outline of a box from the window's color, which on a dark palette is lost on the row.
    if (option->palette.color(QPalette::Base).lightness() < darkBelow)
        option->palette.setColor(QPalette::Window, option->palette.color(QPalette::Mid).lighter(300));
}

void CellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    IconPlateDelegate::paint(painter, option, index);
    if (!(option.state & QStyle::State_HasFocus))
        return;
    // The style's frame hardly shows on a selected row, and the keys act on this cell.
    const bool isSelected = option.state & QStyle::State_Selected;
    painter->save();
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->setOpacity(focusOpacity);
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

bool CellDelegate::eventFilter(QObject *object, QEvent *event)
{
    QWidget *editor = m_editor;
    if (object != editor || event->type() != QEvent::KeyPress) {
        const QPointer<QObject> alive(object); // the loss of the focus may delete the list
        return QStyledItemDelegate::eventFilter(object, event) || !alive;
    }
    // The keys that end an entry are told of at once, and past the line edit, which would swallow those of an entry
    // that its validator does not take.
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT closeEditor(editor, NoHint);
        return true;
    case Qt::Key_Tab:
        Q_EMIT closeEditor(editor, EditNextItem);
        return true;
    case Qt::Key_Backtab:
        Q_EMIT closeEditor(editor, EditPreviousItem);
        return true;
    default:
        return QStyledItemDelegate::eventFilter(object, event);
    }
}
