#include "GalleryControls.h"

#include "ControlPages.h"
#include "ControlsWindow.h"
#include "GalleryStage.h"

QPixmap GalleryControls::draw(std::string_view title)
{
    ControlsWindow window;
    int index = 0;
    for (const ControlPage &page : controlPages()) {
        if (page.title == title)
            window.showPage(index);
        ++index;
    }
    return GalleryStage::photograph(window);
}
