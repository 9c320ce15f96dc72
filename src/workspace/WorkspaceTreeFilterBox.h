#pragma once

#include "common/TdCommonExport.h"

#include <QWidget>

#include <memory>

class CWorkspaceBarTree;

/// A line above a workspace tree that filters it while the user types.
///
/// It hides what does not match and keeps what leads to the matches; what is not filled yet is found too, and filled.
/// Every word must be in an item's label, letter case ignored. Escape clears the text, a second Escape, Down and Enter
/// go to the tree, to the first match. Without the box, and while its text is empty, the tree is as it always is.
class TDCOMMON_API CWorkspaceTreeFilterBox : public QWidget
{
    Q_OBJECT

public:
    explicit CWorkspaceTreeFilterBox(QWidget *parent = nullptr);
    /// A box that filters @p tree.
    explicit CWorkspaceTreeFilterBox(CWorkspaceBarTree *tree, QWidget *parent = nullptr);
    ~CWorkspaceTreeFilterBox() override;

    /// Filters @p tree (not owned, may be null) from now on; the one before shows everything again.
    void SetTree(CWorkspaceBarTree *tree);
    CWorkspaceBarTree *GetTree() const;
    /// The text that is filtered by.
    QString GetText() const;
    /// Changes the text, as the user would.
    void SetText(const QString &text);
    /// How many items match; 0 while the text is empty.
    int GetFoundCount() const;

Q_SIGNALS:
    /// The filter is done with the text.
    void filtered(int found);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void init();
    void applyText();
    void showResult();
    void setTexts();
    void goToTree();
    void placeEmptyNote();

    const std::unique_ptr<class WorkspaceTreeFilterBoxPrivate> d;
};
