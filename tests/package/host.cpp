#include <QApplication>
#include <engine/map/TxWorkspace.h>
#include <workspace/WorkspaceBarTree.h>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    CTxWorkspace workspace;
    workspace.Open(QApplication::arguments().value(1));
    CWorkspaceBarTree tree;
    tree.SetShowItemMask(0xfff); // every group and level
    tree.ConnectWorkspace(workspace);
    tree.FillTreeItem(CWorkspaceBarTree::FillTypeWorkspace);
    tree.show();
    return QApplication::exec();
}
