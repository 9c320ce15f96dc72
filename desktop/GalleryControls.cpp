#include "GalleryControls.h"

#include "ControlPages.h"
#include "ControlsWindow.h"
#include "GalleryStage.h"

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
