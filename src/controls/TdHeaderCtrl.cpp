#include "controls/TdHeaderCtrl.h"

#include "common/TdModule.h"
#include "res/StringId.h"

#include <QAbstractItemModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <QStyleOptionHeaderV2>

#include <algorithm>

CTdHeaderCtrl::CTdHeaderCtrl(Qt::Orientation orientation, QWidget *parent) : QHeaderView(orientation, parent)
{
    setFocusPolicy(Qt::TabFocus);
    setSectionsClickable(true);
    setHighlightSections(false);
    connect(this, &QHeaderView::sortIndicatorChanged, this, &CTdHeaderCtrl::describe);
}

CTdHeaderCtrl::~CTdHeaderCtrl() = default;

bool CTdHeaderCtrl::HasCheckBox(int section) const
{
    return model() && model()->headerData(section, orientation(), Qt::CheckStateRole).isValid();
}

Qt::CheckState CTdHeaderCtrl::GetCheckState(int section) const
{
    return model() ? model()->headerData(section, orientation(), Qt::CheckStateRole).value<Qt::CheckState>()
                   : Qt::Unchecked;
}

QRect CTdHeaderCtrl::GetCheckBoxRect(int section) const
{
    if (section < 0 || section >= count() || !HasCheckBox(section))
        return {};
    const int start = sectionViewportPosition(section);
    return checkBoxRect(orientation() == Qt::Horizontal ? QRect(start, 0, sectionSize(section), viewport()->height())
                                                        : QRect(0, start, viewport()->width(), sectionSize(section)));
}

void CTdHeaderCtrl::SetSortMark(int section, Qt::SortOrder order)
{
    const QSignalBlocker blocker(this);
    setSortIndicator(section < count() ? std::max(section, -1) : -1, order);
    describe();
    viewport()->update();
}

int CTdHeaderCtrl::GetSortSection() const
{
    const int section = isSortIndicatorShown() ? sortIndicatorSection() : -1;
    return section < count() ? section : -1;
}

int CTdHeaderCtrl::GetCurrentSection() const
{
    return m_current < count() && !isSectionHidden(m_current) ? m_current : logicalIndexAt(0);
}

/// The place of the check box in a section: at its beginning, as the style sizes and mirrors it.
QRect CTdHeaderCtrl::checkBoxRect(const QRect &section) const
{
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    const QSize size(style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this),
                     style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this));
    const QRect box(QPoint(section.x() + margin, section.y() + (section.height() - size.height()) / 2), size);
    return QStyle::visualRect(layoutDirection(), section, box);
}

int CTdHeaderCtrl::checkBoxAt(const QPoint &position) const
{
    const int section = logicalIndexAt(position);
    return GetCheckBoxRect(section).contains(position) ? section : -1;
}

void CTdHeaderCtrl::paintSection(QPainter *painter, const QRect &rect, int section) const
{
    if (!HasCheckBox(section)) {
        painter->save();
        QHeaderView::paintSection(painter, rect, section);
        painter->restore();
    } else {
        QStyleOptionHeaderV2 option;
        initStyleOption(&option);
        initStyleOptionForIndex(&option, section);
        option.rect = rect;
        style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);

        QStyleOptionButton box;
        box.initFrom(this);
        box.rect = checkBoxRect(rect);
        box.state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver);
        const Qt::CheckState state = GetCheckState(section);
        box.state |= state == Qt::Checked     ? QStyle::State_On
                     : state == Qt::Unchecked ? QStyle::State_Off
                                              : QStyle::State_NoChange;
        if (m_pressedBox == section)
            box.state |= QStyle::State_Sunken;
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, this);

        // Label and mark share what the box leaves over.
        const int taken = box.rect.width() + style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
        option.rect = QStyle::visualRect(layoutDirection(), rect, rect.adjusted(taken, 0, 0, 0));
        const QStyleOptionHeaderV2 rest = option;
        option.rect = style()->subElementRect(QStyle::SE_HeaderLabel, &rest, this);
        style()->drawControl(QStyle::CE_HeaderLabel, &option, painter, this);
        if (option.sortIndicator != QStyleOptionHeader::None) {
            option.rect = style()->subElementRect(QStyle::SE_HeaderArrow, &rest, this);
            style()->drawPrimitive(QStyle::PE_IndicatorHeaderArrow, &option, painter, this);
        }
    }
    if (hasFocus() && section == GetCurrentSection()) {
        QStyleOptionFocusRect frame;
        frame.initFrom(this);
        frame.state |= QStyle::State_KeyboardFocusChange;
        frame.backgroundColor = palette().color(QPalette::Button);
        frame.rect = rect.adjusted(1, 1, -2, -2);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, painter, this);
    }
}

QSize CTdHeaderCtrl::sectionSizeFromContents(int section) const
{
    QSize size = QHeaderView::sectionSizeFromContents(section);
    if (HasCheckBox(section)) {
        const QRect box = checkBoxRect(QRect(QPoint(0, 0), size));
        size.rwidth() += box.width() + style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
        size.setHeight(std::max(size.height(), box.height()));
    }
    return size;
}

void CTdHeaderCtrl::clickCheckBox(int section)
{
    const Qt::CheckState wanted = GetCheckState(section) == Qt::Checked ? Qt::Unchecked : Qt::Checked;
    const QPointer<CTdHeaderCtrl> alive(this); // who is told of it may delete the list
    if (!model()->setHeaderData(section, orientation(), wanted, Qt::CheckStateRole) || !alive)
        return;
    describe();
    Q_EMIT checkBoxClicked(section, GetCheckState(section));
}

void CTdHeaderCtrl::sortBy(int section)
{
    if (sectionsClickable() && isSortIndicatorShown()) {
        const bool isTurned = section == sortIndicatorSection() && sortIndicatorOrder() == Qt::AscendingOrder;
        setSortIndicator(section, isTurned ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
    Q_EMIT sectionClicked(section);
}

void CTdHeaderCtrl::mousePressEvent(QMouseEvent *event)
{
    // At a section's border a press resizes, and the box keeps clear of borders.
    m_pressedBox = event->button() == Qt::LeftButton ? checkBoxAt(event->position().toPoint()) : -1;
    if (m_pressedBox < 0)
        QHeaderView::mousePressEvent(event);
    else
        viewport()->update();
}

void CTdHeaderCtrl::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressedBox < 0)
        QHeaderView::mouseMoveEvent(event);
}

void CTdHeaderCtrl::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_pressedBox < 0 || event->button() != Qt::LeftButton) {
        QHeaderView::mouseReleaseEvent(event);
        return;
    }
    const int pressed = std::exchange(m_pressedBox, -1);
    viewport()->update();
    if (checkBoxAt(event->position().toPoint()) == pressed)
        clickCheckBox(pressed);
}

void CTdHeaderCtrl::mouseDoubleClickEvent(QMouseEvent *event)
{
    // Two quick clicks on a box are two clicks.
    if (checkBoxAt(event->position().toPoint()) >= 0)
        mousePressEvent(event);
    else
        QHeaderView::mouseDoubleClickEvent(event);
}

/// Makes the first shown section from @p visual on in direction @p step the current one.
void CTdHeaderCtrl::moveTo(int visual, int step)
{
    while (visual >= 0 && visual < count() && isSectionHidden(logicalIndex(visual)))
        visual += step;
    if (visual < 0 || visual >= count())
        return;
    m_current = logicalIndex(visual);
    if (auto *area = qobject_cast<QAbstractItemView *>(parentWidget()); area && area->model() == model())
        area->scrollTo(model()->index(std::max(area->currentIndex().row(), 0), m_current, area->rootIndex()));
    describe();
    viewport()->update();
}

void CTdHeaderCtrl::keyPressEvent(QKeyEvent *event)
{
    const int section = GetCurrentSection();
    const int visual = visualIndex(section);
    const bool isMirrored = orientation() == Qt::Horizontal && layoutDirection() == Qt::RightToLeft;
    const bool isHorizontal = orientation() == Qt::Horizontal;
    const int forward = isHorizontal ? isMirrored ? Qt::Key_Left : Qt::Key_Right : Qt::Key_Down;
    const int back = isHorizontal ? isMirrored ? Qt::Key_Right : Qt::Key_Left : Qt::Key_Up;
    const int leave = isHorizontal ? Qt::Key_Down : Qt::Key_Right;
    const int key = event->key();
    if (section < 0 || (event->modifiers() & ~Qt::KeypadModifier)) {
        event->ignore();
    } else if (key == forward) {
        moveTo(visual + 1, 1);
    } else if (key == back) {
        moveTo(visual - 1, -1);
    } else if (key == Qt::Key_Home) {
        moveTo(0, 1);
    } else if (key == Qt::Key_End) {
        moveTo(count() - 1, -1);
    } else if (key == Qt::Key_Space && HasCheckBox(section)) {
        clickCheckBox(section);
    } else if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
        sortBy(section);
    } else if (key == leave && parentWidget()) {
        parentWidget()->setFocus(Qt::OtherFocusReason);
    } else {
        event->ignore();
    }
}

bool CTdHeaderCtrl::event(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        describe();
    return QHeaderView::event(event);
}

void CTdHeaderCtrl::focusInEvent(QFocusEvent *event)
{
    QHeaderView::focusInEvent(event);
    describe();
    viewport()->update();
}

void CTdHeaderCtrl::focusOutEvent(QFocusEvent *event)
{
    QHeaderView::focusOutEvent(event);
    viewport()->update();
}

/// Tells assistive tools the current section, its box and its sort mark.
void CTdHeaderCtrl::describe()
{
    const int section = GetCurrentSection();
    if (!hasFocus() || section < 0)
        return;
    QStringList words(model()->headerData(section, orientation()).toString());
    if (HasCheckBox(section)) {
        const Qt::CheckState state = GetCheckState(section);
        words += CTdModule::LoadString(state == Qt::Checked     ? TdStringId::HeaderAllChecked
                                       : state == Qt::Unchecked ? TdStringId::HeaderNoneChecked
                                                                : TdStringId::HeaderSomeChecked);
    }
    if (section == GetSortSection())
        words += CTdModule::LoadString(sortIndicatorOrder() == Qt::AscendingOrder ? TdStringId::HeaderAscending
                                                                                  : TdStringId::HeaderDescending);
    setAccessibleName(words.join(QStringLiteral(", ")));
}
