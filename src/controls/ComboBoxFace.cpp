#include "controls/ComboBoxFace.h"

#include "controls/DrawnText.h"
#include "controls/TdAutoWidthComboBox.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace {

constexpr int anyLength = std::numeric_limits<int>::max(); // or an edit would cut a long text off

} // namespace

ComboBoxFace::ComboBoxFace(QAbstractItemModel *entries, int length, QWidget *parent)
    : QWidget(parent), m_entries(entries), m_box(new CTdAutoWidthComboBox(this)), m_length(length)
{
    m_box->setModel(entries);
    m_box->setInsertPolicy(QComboBox::NoInsert);
    connect(m_box, &QComboBox::activated, this, &ComboBoxFace::activated);
    setFocusProxy(m_box);
    setAttribute(Qt::WA_Hover);
    fit();
}

ComboBoxFace::~ComboBoxFace() = default;

void ComboBoxFace::fit()
{
    const QSize lying(m_length, m_box->sizeHint().height());
    m_box->setFixedSize(lying);
    setFixedSize(m_isUpright ? lying.transposed() : lying);
    updateGeometry();
    update();
}

void ComboBoxFace::setUpright(bool upright)
{
    if (upright == m_isUpright)
        return;
    m_isUpright = upright;
    m_box->setVisible(!upright);
    setFocusProxy(upright ? nullptr : m_box);
    setFocusPolicy(upright ? Qt::StrongFocus : Qt::NoFocus);
    fit();
}

void ComboBoxFace::setLength(int length)
{
    m_length = length;
    fit();
}

void ComboBoxFace::setEditable(bool editable)
{
    m_box->setEditable(editable);
    QLineEdit *edit = m_box->lineEdit();
    if (edit)
        edit->setMaxLength(anyLength);
    showEntry(m_index, m_text);
    if (!edit)
        return;
    connect(edit, &QLineEdit::editingFinished, this, [this, edit] {
        const QString text = edit->text();
        if (text == m_text)
            return;
        if (window()->isHidden()) // nobody has finished: the window goes, and takes the focus along
            showEntry(m_index, m_text);
        else
            Q_EMIT typed(text);
    });
    edit->installEventFilter(this);
}

void ComboBoxFace::showEntry(int index, const QString &text)
{
    m_index = index;
    m_text = text;
    const QSignalBlocker silent(m_box);
    m_box->setCurrentIndex(index);
    if (m_box->isEditable())
        m_box->setEditText(text);
    describe(m_name, toolTip());
    update();
}

void ComboBoxFace::describe(const QString &name, const QString &toolTip)
{
    m_name = name;
    m_box->setAccessibleName(name);
    m_box->setAccessibleDescription(name); // the name of a combo box is told as its text on some systems
    setToolTip(toolTip);                   // the box has it from here
    setAccessibleName(name);
    setAccessibleDescription(m_text);
}

bool ComboBoxFace::event(QEvent *event)
{
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)
        fit();
    return QWidget::event(event);
}

/// Escape in the edit gives up what was typed.
bool ComboBoxFace::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (isKey && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && m_box->currentText() != m_text) {
        event->accept();
        if (event->type() == QEvent::KeyPress)
            showEntry(m_index, m_text);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ComboBoxFace::paintEvent(QPaintEvent *)
{
    if (!m_isUpright)
        return;
    // A combo box turned by a quarter, whose arrow then points to where the entries drop down.
    QStylePainter painter(this);
    painter.translate(0, height());
    painter.rotate(-90);
    QStyleOptionComboBox option;
    option.initFrom(this);
    option.rect = QRect(0, 0, height(), width());
    option.direction = Qt::LeftToRight;
    option.editable = false;
    option.subControls = QStyle::SC_All;
    if (m_panel)
        option.state |= QStyle::State_On;
    const QRect field = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText =
        fontMetrics().elidedText(drawnText(m_text.isEmpty() ? m_name : m_text), Qt::ElideRight, field.width());
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void ComboBoxFace::mousePressEvent(QMouseEvent *event)
{
    if (m_isUpright && event->button() == Qt::LeftButton)
        dropDown();
    else
        QWidget::mousePressEvent(event);
}

void ComboBoxFace::keyPressEvent(QKeyEvent *event)
{
    constexpr int keys[] = {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down, Qt::Key_Up, Qt::Key_F4};
    if (m_isUpright && std::find(std::begin(keys), std::end(keys), event->key()) != std::end(keys))
        dropDown();
    else
        QWidget::keyPressEvent(event);
}

namespace {

/// The frame that is dropped down: Escape puts it away, Down leads from its edit to its list.
class Panel : public QFrame
{
public:
    explicit Panel(QWidget *parent) : QFrame(parent, Qt::Popup)
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins({});
        layout->setSpacing(0);
        layout->setSizeConstraint(QLayout::SetFixedSize); // windows that may grow start too large
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Escape)
            close();
        else if (auto *list = findChild<QListView *>(); event->key() == Qt::Key_Down && !list->hasFocus())
            list->setFocus();
        else
            QFrame::keyPressEvent(event);
    }
};

} // namespace

void ComboBoxFace::dropDown()
{
    if (m_panel)
        return;
    m_panel = new Panel(this);
    m_panel->setAccessibleName(m_name);
    connect(m_panel, &QObject::destroyed, this, [this] { update(); });
    QLineEdit *edit = nullptr;
    if (m_box->isEditable()) {
        edit = new QLineEdit(m_panel);
        edit->setMaxLength(anyLength);
        edit->setText(m_text);
        edit->setAccessibleName(m_name);
        m_panel->layout()->addWidget(edit);
        connect(edit, &QLineEdit::returnPressed, this, [this, edit] {
            const QString text = edit->text();
            m_panel->close();
            if (text != m_text)
                Q_EMIT typed(text);
        });
    }
    auto *list = new QListView(m_panel);
    list->setObjectName(u"entries");
    list->setModel(m_entries);
    list->setUniformItemSizes(true);
    list->setFrameShape(QFrame::NoFrame);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setMouseTracking(true);
    list->setAccessibleName(m_name);
    list->setCurrentIndex(m_entries->index(m_index, 0));
    m_panel->layout()->addWidget(list);
    connect(list, &QListView::entered, list, &QListView::setCurrentIndex);
    connect(list, &QListView::clicked, this, &ComboBoxFace::takeEntry);
    connect(list, &QListView::activated, this, &ComboBoxFace::takeEntry);
    const int rows = std::clamp(m_entries->rowCount(), 1, m_box->maxVisibleItems());
    list->setFixedHeight(rows * std::max(list->sizeHintForRow(0), fontMetrics().height()));
    const QRect room = screen()->availableGeometry();
    list->setFixedWidth(std::clamp(m_box->GetDroppedWidth(), std::min(m_length, room.width()), room.width() - 4));
    m_panel->layout()->activate();
    // Beside the bar, on the side that has room, and on the screen.
    const QPoint corner = mapToGlobal(QPoint(width(), 0));
    const int left =
        corner.x() + m_panel->width() <= room.right() ? corner.x() : corner.x() - width() - m_panel->width();
    m_panel->move(std::clamp(left, room.left(), std::max(room.left(), room.right() - m_panel->width())),
                  std::clamp(corner.y(), room.top(), std::max(room.top(), room.bottom() - m_panel->height())));
    m_panel->show();
    if (edit) {
        edit->selectAll();
        edit->setFocus();
    } else {
        list->setFocus();
    }
    update();
}

void ComboBoxFace::takeEntry(const QModelIndex &index)
{
    if (!m_panel || !m_panel->isVisible() || !index.isValid())
        return; // a click that also activates has been taken already
    const int row = index.row();
    m_panel->close();
    Q_EMIT activated(row);
}
