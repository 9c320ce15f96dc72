#pragma once

#include "engine/base/TxExport.h"
#include "engine/base/TxNamedMap.h"

/// A stored page layout. Belongs to the workspace's CTxLytStorages.
class TX_EXPORT CTxLytStorage
{
public:
    const QString &GetName() const { return m_name; }
    /// The layout's content as XML, kept as it is; empty for an empty page.
    const QString &GetContent() const { return m_content; }
    void SetContent(const QString &xml) { m_content = xml; }

private:
    friend class CTxLytStorages;
    friend class TxWorkspaceFile;
    CTxLytStorage() = default;

    QString m_name;
    QString m_content;
    QString m_unknownXml; // what the workspace file held of it that this version does not know
};

/// The layouts of a workspace by name.
class TX_EXPORT CTxLytStorages : public TxNamedMap<CTxLytStorage>
{
public:
    CTxLytStorages() = default;

    /// Makes an empty layout. @return null when @p name is empty or taken.
    CTxLytStorage *Add(const QString &name);
    bool Remove(const QString &name);
    bool Rename(const QString &name, const QString &newName);
    void RemoveAll();
};
