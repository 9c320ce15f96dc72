#include "DropContent.h"

#include <QMimeData>
#include <QUrl>

DropContent::DropContent(const QMimeData &mime)
{
    if (CTdOleDataNode::fromMime(mime, datasets)) {
        datasets.entries.removeIf([](const CTdOleDataNode::CTdOleData &entry) {
            return entry.itemType != CTdOleDataNode::ItemDataset && entry.itemType != CTdOleDataNode::ItemSubDataset;
        });
        return; // items of the tree may carry their files too; the items are what is meant
    }
    const QList<QUrl> urls = mime.urls();
    for (const QUrl &url : urls)
        if (url.isLocalFile())
            files << url.toLocalFile();
}
