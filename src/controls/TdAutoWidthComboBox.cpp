#include "controls/TdAutoWidthComboBox.h"

#include "common/IconPlateDelegate.h"
#include "controls/DrawnText.h"
#include "engine/ui/TxWheelGuard.h"

#include <QLineEdit>
#include <QListView>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionComboBox>

#include <algorithm>
#include <array>
#include <vector>

namespace {

/// The width of a text as the sum of its characters' widths: quick, but blind to kerning and ligatures.
class WidthEstimate
{
public:
    explicit WidthEstimate(const QFontMetrics &metrics) : m_metrics(metrics) { m_widths.fill(unknown); }

    int of(const QString &text)
    {
        int width = 0;
        for (const QChar character : text) {
            if (character.unicode() >= m_widths.size()) {
                width += m_metrics.maxWidth() / 2; // a script of wide characters, most likely
                continue;
            }
            int &known = m_widths[character.unicode()];
            if (known == unknown)
                known = m_metrics.horizontalAdvance(character);
            width += known;
        }
        return width;
    }

private:
    static constexpr int unknown = -1;
    const QFontMetrics m_metrics;
    std::array<int, 0x500> m_widths{}; // Latin, Greek and Cyrillic
};

struct Candidate
{
    int estimate;
    int row;
};

bool isWider(const Candidate &a, const Candidate &b)
{
    return a.estimate > b.estimate;
}

} // namespace

CTdAutoWidthComboBox::CTdAutoWidthComboBox(QWidget *parent) : QComboBox(parent)
{
    TxWheelGuard::install(this);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // else every entry would be measured
    setMinimumContentsLength(6);
    // A delegate that some styles do not replace by one that draws menu items, which would measure otherwise.
    setItemDelegate(new IconPlateDelegate(this));
    setIconSize(iconSize()); // the list's icons would be larger than that of the closed box
    if (auto *list = qobject_cast<QListView *>(view()))
        list->setUniformItemSizes(true);
}

CTdAutoWidthComboBox::~CTdAutoWidthComboBox() = default;

int CTdAutoWidthComboBox::extraWidth(const QModelIndex &) const
{
    return 0;
}

int CTdAutoWidthComboBox::GetDroppedWidth() const
{
    if (count() == 0)
        return 0;
    // The widest few by estimate are measured as they will be drawn.
    constexpr size_t measured = 16;
    std::vector<Candidate> candidates;
    candidates.reserve(static_cast<size_t>(count()));
    WidthEstimate estimate(view()->fontMetrics());
    for (int row = 0; row < count(); ++row) {
        const QModelIndex index = model()->index(row, modelColumn(), rootModelIndex());
        candidates.push_back({estimate.of(index.data(Qt::DisplayRole).toString()) + extraWidth(index), row});
    }
    const size_t kept = std::min(measured, candidates.size());
    std::partial_sort(candidates.begin(), candidates.begin() + static_cast<std::ptrdiff_t>(kept), candidates.end(),
                      isWider);
    int width = 0;
    for (size_t i = 0; i < kept; ++i) {
        const QModelIndex index = model()->index(candidates[i].row, modelColumn(), rootModelIndex());
        width = std::max(width, view()->sizeHintForIndex(index).width() + extraWidth(index));
    }
    if (count() > maxVisibleItems())
        width += view()->verticalScrollBar()->sizeHint().width();
    return width + 2 * view()->frameWidth();
}

void CTdAutoWidthComboBox::showPopup()
{
    const QRect room = screen()->availableGeometry();
    m_showsLongList = count() > maxVisibleItems();
    if (m_showsLongList)
        view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // Beside the scroll bar there is no need for the strips above and below that scroll a menu.
    for (QWidget *strip : view()->parentWidget()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        if (strip != view())
            strip->setMaximumHeight(m_showsLongList ? 0 : QWIDGETSIZE_MAX);
    }
    QComboBox::showPopup();
    QWidget *list = view()->window();
    if (list == window())
        return; // nothing to show
    QRect place = list->geometry();
    place.setWidth(
        std::min(std::max(place.width(), GetDroppedWidth() + place.width() - view()->width()), room.width()));
    const QPoint corner = mapToGlobal(QPoint(0, 0));
    place.moveLeft(isRightToLeft() ? corner.x() + width() - place.width() : corner.x());
    place.moveLeft(std::clamp(place.left(), room.left(), room.left() + room.width() - place.width()));
    list->setGeometry(place);
}

void CTdAutoWidthComboBox::hidePopup()
{
    QComboBox::hidePopup();
    m_showsLongList = false;
}

void CTdAutoWidthComboBox::initStyleOption(QStyleOptionComboBox *option) const
{
    QComboBox::initStyleOption(option);
    option->currentText = drawnText(option->currentText);
    // Some styles drop the list of a box that is not editable as a menu: as high as the screen, without a scroll bar.
    option->editable = option->editable || m_showsLongList;
}

void CTdAutoWidthComboBox::paintEvent(QPaintEvent *event)
{
    const QScopedValueRollback asItIs(m_showsLongList, false);
    QComboBox::paintEvent(event);
}
