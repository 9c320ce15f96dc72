#pragma once

#include "engine/base/TxExport.h"

#include <QString>

#include <memory>
#include <vector>

/// A stored 3D scene. Belongs to the workspace's CTxScenes.
class TX_EXPORT CTxSceneStorage
{
public:
    const QString &GetName() const { return m_name; }
    /// The scene's content as XML, kept as it is; empty for an empty scene.
    const QString &GetContent() const { return m_content; }
    void SetContent(const QString &xml) { m_content = xml; }

private:
    friend class CTxScenes;
    friend class TxWorkspaceFile;
    CTxSceneStorage() = default;

    QString m_name;
    QString m_content;
    QString m_unknownXml; // what the workspace file held of it that this version does not know
};

/// The scenes of a workspace, by index.
class TX_EXPORT CTxScenes
{
public:
    CTxScenes() = default;
    CTxScenes(const CTxScenes &) = delete;
    CTxScenes &operator=(const CTxScenes &) = delete;

    qint32 GetCount() const { return static_cast<qint32>(m_scenes.size()); }
    /// The scene at 0-based @p index, null when out of range.
    CTxSceneStorage *GetAt(qint32 index) const;
    /// The index of the scene called @p name, -1 when there is none.
    qint32 Find(const QString &name) const;
    /// Makes an empty scene at the end. @return null when @p name is empty or taken.
    CTxSceneStorage *Add(const QString &name);
    /// Removes and frees the scene at @p index.
    bool Remove(qint32 index);
    void RemoveAll();

private:
    std::vector<std::unique_ptr<CTxSceneStorage>> m_scenes;
};
