#include "controls/TdComboBoxButton.h"

#include "basic/TdHostMessage.h"
#include "common/TdModule.h"
#include "common/TdSendMessage.h"
#include "controls/ComboBoxFace.h"
#include "controls/ToolBarButton.h"

#include <QStandardItemModel>
#include <QToolBar>

namespace {

constexpr int usualWidth = 150;      // pixels
constexpr quint16 formatVersion = 1; // of the stream; do not change

/// Every button there is, in the order they were made. User-interface thread only.
QList<CTdComboBoxButton *> &allButtons()
{
    static QList<CTdComboBoxButton *> buttons;
    return buttons;
}

/// What stands before the data of an entry in a stream; do not change the values. A variant written as such could be
/// made by garbage into anything.
enum DataKind : quint8 { NoData = 0, TruthValue = 1, WholeNumber = 2, RealNumber = 3, TextData = 4 };

void writeData(QDataStream &stream, const QVariant &data)
{
    const int type = data.typeId();
    if (type == QMetaType::Bool)
        stream << quint8(TruthValue) << data.toBool();
    else if (type == QMetaType::Int || type == QMetaType::UInt || type == QMetaType::LongLong)
        stream << quint8(WholeNumber) << qint64(data.toLongLong());
    else if (type == QMetaType::Double)
        stream << quint8(RealNumber) << data.toDouble();
    else if (type == QMetaType::QString)
        stream << quint8(TextData) << data.toString();
    else
        stream << quint8(NoData);
}

template<class Value>
QVariant readValue(QDataStream &stream)
{
    Value value{};
    stream >> value;
    return value;
}

bool readData(QDataStream &stream, QVariant &data)
{
    quint8 kind = NoData;
    stream >> kind;
    if (kind > TextData)
        return false;
    data = kind == TruthValue    ? readValue<bool>(stream)
           : kind == WholeNumber ? readValue<qint64>(stream)
           : kind == RealNumber  ? readValue<double>(stream)
           : kind == TextData    ? readValue<QString>(stream)
                                 : QVariant();
    return stream.status() == QDataStream::Ok;
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
    // Who is told of a choice may delete the button while one of its faces is telling.
    for (ComboBoxFace *face : faces())
        releaseWidget(face);
}

QList<ComboBoxFace *> CTdComboBoxButton::faces() const
{
    QList<ComboBoxFace *> list;
    for (QWidget *widget : createdWidgets()) {
        if (auto *face = qobject_cast<ComboBoxFace *>(widget))
            list.append(face);
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
    auto *face = new ComboBoxFace(m_entries, m_width, parent);
    face->setEnabled(isEnabled());
    face->setEditable(m_isEditable);
    face->showEntry(m_current, m_text);
    face->describe(text(), toolTip());
    if (auto *bar = qobject_cast<QToolBar *>(parent)) {
        const auto turn = [face](Qt::Orientation orientation) { face->setUpright(orientation == Qt::Vertical); };
        turn(bar->orientation());
        connect(bar, &QToolBar::orientationChanged, face, turn);
    }
    connect(face, &ComboBoxFace::activated, this, [this](int index) { choose(index, GetItem(index), true); });
    connect(face, &ComboBoxFace::typed, this, [this](const QString &typed) { choose(FindItem(typed), typed, true); });
    return face;
}

void CTdComboBoxButton::show(int index, const QString &text)
{
    m_current = index;
    m_text = text;
    for (ComboBoxFace *face : faces())
        face->showEntry(index, text);
}

void CTdComboBoxButton::choose(int index, const QString &text, bool notify)
{
    const QString chosenText = text; // the argument may be a button's own
    for (CTdComboBoxButton *button : sharers())
        button->show(index, chosenText);
    if (!notify)
        return;
    const QPointer<CTdComboBoxButton> alive(this);
    const QList<QPointer<QWidget>> windows = listeners();
    Q_EMIT chosen(index, chosenText); // before the command, whose receivers may ask those who listen here
    for (const QPointer<QWidget> &window : windows) {
        if (!alive)
            return; // who was told took the button away
        CTdHostMessage command(CTdHostMessage::Command, static_cast<qint64>(m_commandId));
        TdSendMessage(window, command);
    }
}

/// The windows that are told the command.
QList<QPointer<QWidget>> CTdComboBoxButton::listeners()
{
    if (QWidget *main = CTdModule::GetMainWnd())
        return {main};
    QList<QPointer<QWidget>> windows;
    for (const CTdComboBoxButton *button : sharers()) {
        for (const ComboBoxFace *face : button->faces()) {
            if (QWidget *window = ToolBarButton::frameOf(*face); !windows.contains(window))
                windows.append(window);
        }
    }
    return windows;
}

void CTdComboBoxButton::SetEditable(bool editable)
{
    if (editable == m_isEditable)
        return;
    for (CTdComboBoxButton *button : sharers()) {
        button->m_isEditable = editable;
        if (!editable && button->m_current < 0)
            button->m_text.clear(); // a typed text cannot stay
        for (ComboBoxFace *face : button->faces()) {
            face->setEditable(editable);
            face->showEntry(button->m_current, button->m_text);
        }
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

void CTdComboBoxButton::applyWidth(int width)
{
    m_width = width;
    for (ComboBoxFace *face : faces())
        face->setLength(width);
}

/// Gives copies of @p entries, and what is chosen of them, to all buttons with the command.
void CTdComboBoxButton::setEntries(const QStandardItemModel &entries, bool editable, int current, const QString &text)
{
    for (CTdComboBoxButton *button : sharers()) {
        button->m_entries->clear();
        for (int i = 0; i < entries.rowCount(); ++i)
            button->m_entries->appendRow(entries.item(i)->clone());
    }
    SetEditable(editable);
    choose(current, text, false);
}

void CTdComboBoxButton::CopyFrom(const CTdComboBoxButton &other)
{
    setText(other.text());
    setToolTip(other.toolTip());
    applyWidth(other.m_width);
    if (!sharers().contains(&other)) // which has the same entries
        setEntries(*other.m_entries, other.m_isEditable, other.m_current, other.m_text);
}

void CTdComboBoxButton::Serialize(QDataStream &stream) const
{
    const ToolBarButton::StreamFormat format(stream);
    stream << formatVersion << qint32(m_commandId) << qint32(m_width) << m_isEditable << qint32(GetCount());
    for (int i = 0; i < GetCount(); ++i) {
        stream << GetItem(i);
        writeData(stream, GetItemData(i));
    }
    stream << qint32(m_current) << m_text;
}

bool CTdComboBoxButton::Deserialize(QDataStream &stream)
{
    if (!stream.device())
        return false;
    const ToolBarButton::StreamFormat format(stream);
    quint16 version = 0;
    qint32 commandId = 0, width = 0, count = 0, current = 0;
    bool editable = false;
    stream >> version >> commandId >> width >> editable >> count;
    if (stream.status() != QDataStream::Ok || version != formatVersion || width < 1 ||
        width > ToolBarButton::greatestWidth || count < 0)
        return false;
    QStandardItemModel entries;
    for (int i = 0; i < count; ++i) {
        QString entry;
        QVariant data;
        stream >> entry;
        if (!readData(stream, data)) // at the end of the stream too, however many entries it promises
            return false;
        auto *item = new QStandardItem(entry);
        item->setData(data, Qt::UserRole);
        entries.appendRow(item);
    }
    QString text;
    stream >> current >> text;
    const bool isEntry = current >= 0 && current < count && entries.item(current)->text() == text;
    const bool isTyped = current == -1 && (editable || text.isEmpty());
    if (stream.status() != QDataStream::Ok || (!isEntry && !isTyped))
        return false;
    m_commandId = commandId;
    applyWidth(width);
    setEntries(entries, editable, current, text);
    return true;
}

void CTdComboBoxButton::followState()
{
    // Enabled and visible follow by themselves.
    for (ComboBoxFace *face : faces())
        face->describe(text(), toolTip());
}
