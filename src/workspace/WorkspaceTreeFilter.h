#pragma once

#include <QDeadlineTimer>
#include <QList>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <vector>

class CTxDataSource;
class CWorkspaceBarTree;
class QTreeWidgetItem;

/// Hides the items of a workspace tree that do not match a text.
///
/// An item matches when its label holds every word of the text, letter case ignored; root and groups only lead to what
/// matches. What is not filled yet is looked up in the workspace, and filled when something of it matches; tiles are
/// found once they are listed. Work is done in short slices between the events, and begins anew when the tree changes.
class WorkspaceTreeFilter : public QObject
{
    Q_OBJECT

public:
    explicit WorkspaceTreeFilter(CWorkspaceBarTree *tree, QObject *parent = nullptr);
    ~WorkspaceTreeFilter() override;

    /// Begins to filter by @p text; an empty one shows everything again and folds what the filter unfolded.
    void setText(const QString &text);
    bool isActive() const { return !m_words.isEmpty(); }
    bool isRunning() const { return m_phase != Idle; }
    /// How many items match, as far as is known.
    int found() const { return m_found; }
    /// The topmost item that matches, null when none does or the filter has not come so far.
    QTreeWidgetItem *firstMatch() const;

Q_SIGNALS:
    /// The filter has done all it had to do.
    void finished(int found);

private:
    enum Phase { Idle, FillPhase, MatchPhase, HidePhase, UnfoldPhase };
    /// An item with its place, parents before their children.
    struct Place
    {
        QTreeWidgetItem *item; // not owned; every change of the tree drops the places
        int parent;            // place of the parent, -1 for top-level items
        int row;
        int firstChild; // place of the first child, -1 when there is none
        bool matches;
        bool leadsToMatch;
        bool shown;
    };

    void restart(Phase from);
    void runSlice();
    bool fillSome(const QDeadlineTimer &slice);
    bool matchSome(const QDeadlineTimer &slice);
    bool hideSome(const QDeadlineTimer &slice);
    bool unfoldSome(const QDeadlineTimer &slice);
    void fillNamedGroups();
    bool holdsMatch(const CTxDataSource *dataSource, const QString &alias, const QDeadlineTimer &slice, bool &known);
    void settleVisibility();
    size_t topmostMatch() const;
    void foldForWork(QTreeWidgetItem *parent);
    void foldAgain();
    bool textMatches(const QString &label) const;

    QPointer<CWorkspaceBarTree> m_tree;
    QTimer m_timer;
    QStringList m_words;
    Phase m_phase = Idle;
    bool m_filling = false; // the tree changes because of the filter
    std::vector<Place> m_places;
    size_t m_next = 0;        // the place to go on with
    int m_nextDataSource = 0; // the datasource to go on with
    int m_nextDataset = 0;    // and in it the dataset
    int m_found = 0;
    QPersistentModelIndex m_firstMatch;
    QList<QPersistentModelIndex> m_reopen;   // folded while their children are hidden and shown
    QList<QPersistentModelIndex> m_toUnfold; // lead to matches, and are not expanded yet
    QList<QPersistentModelIndex> m_unfolded; // expanded by the filter
};
