#include "engine/data/TxDataSources.h"

#include "engine/data/TxDataSourcePrivate.h"
#include "engine/data/TxStoragePath.h"

CTxDataSources::~CTxDataSources()
{
    clear();
}

CTxDataSource *CTxDataSources::Open(const QString &path, const QString &alias, quint32 options)
{
    if (!alias.isEmpty() && find(alias)) {
        TxGdal::fail(QStringLiteral("A datasource with the alias “%1” is open already").arg(alias));
        return nullptr;
    }
    const QString key = alias.isEmpty() ? GetUnoccupiedAlias(TxStoragePath::aliasOf(path)) : alias;
    std::unique_ptr<CTxDataSource> dataSource = TxDataSourcePrivate::open(path, key, options);
    return dataSource ? insert(key, std::move(dataSource)) : nullptr;
}

bool CTxDataSources::Close(const QString &alias)
{
    const CTxDataSource *dataSource = find(alias);
    return dataSource && TxDataSourcePrivate::of(*dataSource).isIdle() && take(alias) != nullptr;
}

void CTxDataSources::CloseAll()
{
    clear();
}

bool CTxDataSources::Rename(const QString &alias, const QString &newAlias)
{
    if (newAlias.isEmpty() || !rename(alias, newAlias))
        return false;
    TxDataSourcePrivate::of(*find(newAlias)).alias = newAlias;
    return true;
}

QString CTxDataSources::GetUnoccupiedAlias(const QString &proposal) const
{
    const QString base = proposal.isEmpty() ? QStringLiteral("datasource") : proposal;
    QString name = base;
    for (int number = 1; find(name); ++number)
        name = base + u'_' + QString::number(number);
    return name;
}
