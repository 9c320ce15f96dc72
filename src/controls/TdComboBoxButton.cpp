#include "controls/TdComboBoxButton.h"

#include "basic/TdHostMessage.h"
#include "common/TdSendMessage.h"
#include "controls/TdAutoWidthComboBox.h"

#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>
#include <QStandardItemModel>

namespace {

constexpr int usualWidth = 150; // pixels

/// Every button there is, in the order they were made. User-interface thread only.
QList<CTdComboBoxButton *> &allButtons()
{
    static QList<CTdComboBoxButton *> buttons;
    return buttons;
}

} // namespace

CTdComboBoxButton::CTdComboBoxButton(int commandId, int width, QObject *parent)
    : QWidgetAction(parent), m_commandId(commandId), m_width(width <= 0 ? usualWidth : width),
      m_entries(new QStandardItemModel(this))
{
    if (CTdComboBoxButton *other = commandId == -1 ? nullptr : GetByCmd(commandId)) {
        for (int i = 0; i < other->GetCount(); ++i)
            m_entries->appendRow(other->m_entries->item(i)->clone());
        m_isEditable = other->m_isEditable;
        m_current = other->m_current;
        m_text = other->m_text;
    }
    allButtons().append(this);
    connect(this, &QAction::changed, this, &CTdComboBoxButton::followState);
}

CTdComboBoxButton::~CTdComboBoxButton()
{
    allButtons().removeOne(this);
}

QList<CTdAutoWidthComboBox *> CTdComboBoxButton::controls() const
{
    QList<CTdAutoWidthComboBox *> list;
    for (QWidget *widget : createdWidgets()) {
        if (auto *control = qobject_cast<CTdAutoWidthComboBox *>(widget))
            list.append(control);
    }
    return list;
}

/// This button and all others with its command; the command -1 is nobody's, and shared by none.
QList<CTdComboBoxButton *> CTdComboBoxButton::sharers()
{
    QList<CTdComboBoxButton *> list{this};
    for (CTdComboBoxButton *button : allButtons()) {
        if (button != this && m_commandId != -1 && button->m_commandId == m_commandId)
            list.append(button);
    }
    return list;
}

CTdComboBoxButton *CTdComboBoxButton::GetByCmd(int commandId)
{
    for (CTdComboBoxButton *button : allButtons()) {
        if (button->m_commandId == commandId)
            return button;
    }
    return nullptr;
}

QWidget *CTdComboBoxButton::createWidget(QWidget *parent)
{
    auto *control = new CTdAutoWidthComboBox(parent);
    control->setModel(m_entries);
    control->setInsertPolicy(QComboBox::NoInsert);
    control->setFixedWidth(m_width);
    control->setEnabled(isEnabled());
    control->setAccessibleName(text());
    control->setToolTip(toolTip());
    connect(control, &QComboBox::activated, this, [this](int index) { choose(index, GetItem(index), true); });
    makeEditable(*control);
    return control;
}

void CTdComboBoxButton::showIn(CTdAutoWidthComboBox &control) const
{
    const QSignalBlocker silent(control);
    control.setCurrentIndex(m_current);
    if (m_isEditable)
        control.setEditText(m_text);
}

void CTdComboBoxButton::show(int index, const QString &text)
{
    m_current = index;
    m_text = text;
    for (CTdAutoWidthComboBox *control : controls())
        showIn(*control);
}

void CTdComboBoxButton::choose(int index, const QString &text, bool notify)
{
    QList<QPointer<QWidget>> windows;
    for (CTdComboBoxButton *button : sharers()) {
        button->show(index, text);
        for (CTdAutoWidthComboBox *control : button->controls()) {
            if (!windows.contains(control->window()))
                windows.append(control->window());
        }
    }
    if (!notify)
        return;
    const QPointer<CTdComboBoxButton> alive(this);
    Q_EMIT chosen(index, text); // before the command, whose receivers may ask those who listen here
    for (const QPointer<QWidget> &window : windows) {
        if (!alive)
            return; // who was told took the button away
        CTdHostMessage command(CTdHostMessage::Command, static_cast<qint64>(m_commandId));
        TdSendMessage(window, command);
    }
}

void CTdComboBoxButton::makeEditable(CTdAutoWidthComboBox &control)
{
    control.setEditable(m_isEditable);
    showIn(control);
    QLineEdit *edit = control.lineEdit();
    if (!edit)
        return;
    connect(edit, &QLineEdit::editingFinished, this, [this, edit] {
        if (const QString typed = edit->text(); typed != m_text)
            choose(FindItem(typed), typed, true);
    });
}

void CTdComboBoxButton::SetEditable(bool editable)
{
    if (editable == m_isEditable)
        return;
    for (CTdComboBoxButton *button : sharers()) {
        button->m_isEditable = editable;
        if (!editable && button->m_current < 0)
            button->m_text.clear(); // a typed text cannot stay
        for (CTdAutoWidthComboBox *control : button->controls())
            button->makeEditable(*control);
    }
}

int CTdComboBoxButton::AddItem(const QString &text, const QVariant &data)
{
    for (CTdComboBoxButton *button : sharers()) {
        auto *entry = new QStandardItem(text);
        entry->setData(data, Qt::UserRole);
        button->m_entries->appendRow(entry);
        button->show(button->m_current, button->m_text); // the first entry chooses itself in an empty box
    }
    return GetCount() - 1;
}

bool CTdComboBoxButton::DeleteItem(int index)
{
    if (index < 0 || index >= GetCount())
        return false;
    for (CTdComboBoxButton *button : sharers()) {
        const int current = button->m_current;
        button->m_entries->removeRow(index);
        if (current == index)
            button->show(-1, QString());
        else
            button->show(current > index ? current - 1 : current, button->m_text);
    }
    return true;
}

void CTdComboBoxButton::RemoveAllItems()
{
    for (CTdComboBoxButton *button : sharers()) {
        button->m_entries->clear();
        button->show(-1, QString());
    }
}

int CTdComboBoxButton::GetCount() const
{
    return m_entries->rowCount();
}

QString CTdComboBoxButton::GetItem(int index) const
{
    return m_entries->index(index, 0).data(Qt::DisplayRole).toString();
}

QVariant CTdComboBoxButton::GetItemData(int index) const
{
    return m_entries->index(index, 0).data(Qt::UserRole);
}

int CTdComboBoxButton::FindItem(const QString &text) const
{
    for (int i = 0; i < GetCount(); ++i) {
        if (GetItem(i) == text)
            return i;
    }
    return -1;
}

bool CTdComboBoxButton::SelectItem(int index, bool notify)
{
    if (index < -1 || index >= GetCount())
        return false;
    choose(index, GetItem(index), notify);
    return true;
}

bool CTdComboBoxButton::SetText(const QString &text, bool notify)
{
    const int index = FindItem(text);
    if (index < 0 && !m_isEditable)
        return false;
    choose(index, text, notify);
    return true;
}

void CTdComboBoxButton::followState()
{
    // Enabled and visible follow by themselves.
    for (CTdAutoWidthComboBox *control : controls()) {
        control->setAccessibleName(text());
        control->setToolTip(toolTip());
    }
}
