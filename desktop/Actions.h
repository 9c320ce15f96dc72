#pragma once

#include <QObject>

#include <array>

class QAction;

/// The commands of the main window: their texts, icons, keys and tips stand in one table (Actions.cpp).
class Actions : public QObject
{
    Q_OBJECT
public:
    enum Id {
        NewWorkspace,
        OpenWorkspace,
        OpenFiles,
        OpenFolder,
        OpenDatabase,
        MissingDataSources,
        Save,
        SaveAs,
        Exit,
        AddToMap,
        AddToNewMap,
        ShowTable,
        Properties,
        CloseDataset,
        CloseDataSource,
        RefreshDataSource,
        Rename,
        Delete,
        ListTiles,
        CopyDataset,
        Append,
        SmoothLines,
        ParallelLine,
        OpenMap,
        NewMap,
        FitAll,
        ZoomIn,
        ZoomOut,
        RefreshMap,
        LayerStyle,
        StockRamp,
        EditColorSet,
        EditRamp,
        LoadRampFile,
        SaveRampFile,
        SteppedColours,
        ResetColours,
        FindInTree,
        CloseWindow,
        NextWindow,
        PreviousWindow,
        Controls,
        About,
        Count
    };

    /// Makes the actions. Shortcuts work everywhere in the window that owns them.
    explicit Actions(QObject *parent = nullptr);

    QAction *operator[](Id id) const { return m_actions[static_cast<size_t>(id)]; }

private:
    std::array<QAction *, Count> m_actions{}; // children of this
};
