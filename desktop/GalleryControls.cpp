#include "GalleryControls.h"

#include "ControlPages.h"
#include "ControlsWindow.h"
#include "GalleryStage.h"
#include "controls/TdStyleDialog.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QPainter>

namespace {

void turnTo(ControlsWindow &window, std::string_view title)
{
    int index = 0;
    for (const ControlPage &page : controlPages()) {
        if (page.title == title)
            window.showPage(index);
        ++index;
    }
}

} // namespace

QPixmap GalleryControls::draw(std::string_view title)
{
    ControlsWindow window;
    turnTo(window, title);
    return GalleryStage::photograph(window);
}

QPixmap GalleryControls::drawDropped(std::string_view title)
{
    ControlsWindow window;
    turnTo(window, title);
    QPixmap picture = GalleryStage::photograph(window);
    if (auto *box = window.page()->findChild<QComboBox *>()) {
        box->showPopup();
        QApplication::processEvents();
        // Where it drops on a screen that has the room.
        QPainter painter(&picture);
        painter.drawPixmap(box->mapTo(&window, QPoint(0, box->height())), box->view()->window()->grab());
    }
    return picture;
}

QPixmap GalleryControls::drawStyles(TdStyle::Kind kind)
{
    CTxGeoStyle style;
    TdStyle::choose(TdStyle::Line, 12, style); // a railway
    TdStyle::choose(TdStyle::Fill, 28, style); // a linear gradient
    TdStyle::choose(TdStyle::Symbol, 15, style);
    style.lineColor = QColor(0x5A3A2E);
    style.lineWidth = 3;
    style.fillColor = QColor(0xE4EFD8);
    style.fillBackColor = QColor(0x3C7A3C);
    style.symbolColor = QColor(0xB02020);
    style.symbolSize = 48;
    CTdStyleDialog dialog(kind, style);
    dialog.resize(dialog.sizeHint()); // a small screen at twice the size would limit it
    return GalleryStage::photograph(dialog);
}
