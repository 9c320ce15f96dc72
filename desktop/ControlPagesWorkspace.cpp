#include "ControlPages.h"

#include "GalleryData.h"
#include "basic/TdOleDataNode.h"
#include "engine/map/TxWorkspace.h"
#include "workspace/WorkspaceBarTree.h"
#include "workspace/WorkspaceTreeFilterBox.h"

#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// The page: the tree of a workspace of its own, which shows the sample's database, below the line that filters it.
class WorkspacePage : public QWidget
{
public:
    WorkspacePage(QWidget *parent, const ShowValue &show);
    ~WorkspacePage() override { m_tree->DisconnectWorkspace(); }

private:
    void tell();

    const ShowValue m_show;
    CTxWorkspace m_workspace;
    CWorkspaceBarTree *m_tree = new CWorkspaceBarTree;
    CWorkspaceTreeFilterBox *m_filter = new CWorkspaceTreeFilterBox;
};

WorkspacePage::WorkspacePage(QWidget *parent, const ShowValue &show) : QWidget(parent), m_show(show)
{
    // Only to be read: the main window may have it open.
    if (const QString sample = GalleryData::sampleWorkspace(); !sample.isEmpty())
        m_workspace.GetDataSources().Open(QFileInfo(sample).absolutePath() + u"/terravox.tdb"_s, QString(),
                                          CTxDataSource::OpenReadOnly);
    m_tree->SetShowItemMask(CWorkspaceBarTree::ShowWorkspace | CWorkspaceBarTree::ShowDataSourceGroup |
                            CWorkspaceBarTree::ShowDataSources | CWorkspaceBarTree::ShowDatasets);
    m_tree->ConnectWorkspace(m_workspace);
    m_tree->FillTreeItem(CWorkspaceBarTree::FillTypeWorkspace);
    m_filter->SetTree(m_tree);
    for (const qint32 kind : {CTdOleDataNode::ItemDataSources, CTdOleDataNode::ItemDataSource}) {
        if (QTreeWidgetItem *item = m_tree->FindFirstItem(kind))
            item->setExpanded(true);
    }
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_tree, 1);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &WorkspacePage::tell);
    connect(m_filter, &CWorkspaceTreeFilterBox::filtered, this, &WorkspacePage::tell);
    tell();
}

void WorkspacePage::tell()
{
    if (m_workspace.GetDataSources().GetCount() == 0)
        return m_show(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "the sample's data is not installed")));
    QStringList words;
    if (!m_filter->GetText().isEmpty())
        words += ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "%1 found")).arg(m_filter->GetFoundCount());
    const QTreeWidgetItem *item = m_tree->currentItem();
    words += item ? item->text(0) : ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "nothing selected"));
    m_show(words.join(u" · "_s));
}

} // namespace

QWidget *ControlPages::makeWorkspaceTree(QWidget *parent, const ShowValue &show)
{
    return new WorkspacePage(parent, show);
}
