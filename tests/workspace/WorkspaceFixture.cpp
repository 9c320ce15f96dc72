#include "WorkspaceFixture.h"

#include <QLoggingCategory>

namespace {

int errorsSeen = 0;
QtMessageHandler handlerBefore = nullptr;

void countErrors(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (qstrcmp(context.category, "terravox.workspace") == 0)
        ++errorsSeen;
    else if (handlerBefore)
        handlerBefore(type, context, text);
}

} // namespace

ErrorCounter::ErrorCounter()
{
    errorsSeen = 0;
    QLoggingCategory::setFilterRules(QStringLiteral("default=false\nterravox.workspace.debug=true"));
    handlerBefore = qInstallMessageHandler(countErrors);
}

ErrorCounter::~ErrorCounter()
{
    qInstallMessageHandler(handlerBefore);
    QLoggingCategory::setFilterRules(QStringLiteral("default=false"));
}

int ErrorCounter::count() const
{
    return errorsSeen;
}

CTxDataSource *WorkspaceFixture::openLayers(const QString &alias, const QList<LayerRow> &layers)
{
    const QString file = QStringLiteral("%1.ovf").arg(workspace.GetDataSources().GetCount());
    return workspace.GetDataSources().Open(writeVirtualSource(folder.path(), file, layers), alias);
}

void WorkspaceFixture::addMapLayoutAndScene()
{
    workspace.GetMaps().Add(u"m"_s);
    workspace.GetLytStorages().Add(u"l"_s);
    workspace.GetScenes().Add(u"s"_s);
}

void WorkspaceFixture::connect(qint32 mask)
{
    tree.SetShowItemMask(mask);
    tree.ConnectWorkspace(workspace);
}

void WorkspaceFixture::fillAll(qint32 mask)
{
    connect(mask);
    tree.FillTreeItem(Tree::FillTypeWorkspace);
}

QStringList WorkspaceFixture::labels(const QTreeWidgetItem *parent)
{
    QStringList result;
    for (int child = 0; parent && child < parent->childCount(); ++child)
        result.append(parent->child(child)->text(0));
    return result;
}
