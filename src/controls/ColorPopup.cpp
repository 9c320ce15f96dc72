#include "controls/ColorPopup.h"

#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "controls/ColorGrid.h"
#include "res/StringId.h"

#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int columns = 12; // the table of default colours has a hue in each column

QList<COLORREF> defaultColors()
{
    QList<QRgb> pixels;
    int count = 0;
    CTdCommMethods::CreateDefaultColorTable(pixels, count);
    QList<COLORREF> colors;
    colors.reserve(count);
    for (const QRgb pixel : pixels)
        colors.append(TxColorRef::fromRgb(pixel));
    return colors;
}

} // namespace

ColorPopup::ColorPopup(QWidget *owner)
    : QFrame(owner, Qt::Popup), m_grid(new ColorGrid(defaultColors(), columns, this)),
      m_none(new QPushButton(CTdModule::LoadString(TdStringId::ColorButtonNone), this)),
      m_more(new QPushButton(CTdModule::LoadString(TdStringId::ColorButtonMore), this))
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_none);
    layout->addWidget(m_grid, 0, Qt::AlignHCenter);
    layout->addWidget(m_more);
    for (QPushButton *button : {m_none, m_more})
        button->setAutoDefault(true); // Enter pushes them
    setTabOrder(m_none, m_grid);
    setTabOrder(m_grid, m_more);
    // Hidden first: who hears of it may open a window of its own.
    connect(m_grid, &ColorGrid::chosen, this, [this](COLORREF color) {
        hide();
        Q_EMIT chosen(color);
    });
    connect(m_none, &QPushButton::clicked, this, [this] {
        hide();
        Q_EMIT chosen(std::nullopt);
    });
    connect(m_more, &QPushButton::clicked, this, [this] {
        hide();
        Q_EMIT moreWanted();
    });
}

void ColorPopup::open(QWidget *owner, std::optional<COLORREF> color, bool mayBeNone)
{
    m_none->setVisible(mayBeNone);
    m_grid->setCurrentColor(color);
    adjustSize();
    const QRect room = owner->screen()->availableGeometry();
    QRect place(owner->mapToGlobal(QPoint(0, owner->height())), sizeHint());
    if (owner->isRightToLeft())
        place.moveRight(owner->mapToGlobal(QPoint(owner->width() - 1, 0)).x());
    if (place.bottom() > room.bottom())
        place.moveBottom(owner->mapToGlobal(QPoint(0, 0)).y() - 1);
    place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() - place.width() + 1)));
    place.moveTop(std::max(room.top(), place.top()));
    setGeometry(place);
    setAttribute(Qt::WA_NoMouseReplay, false);
    show();
    m_grid->setFocus(Qt::PopupFocusReason);
}

void ColorPopup::mousePressEvent(QMouseEvent *event)
{
    // A press beside it closes it and goes on to what is there: on the button it would open it again.
    const QWidget *owner = parentWidget();
    if (owner->rect().contains(owner->mapFromGlobal(event->globalPosition().toPoint())))
        setAttribute(Qt::WA_NoMouseReplay);
    QFrame::mousePressEvent(event);
}
