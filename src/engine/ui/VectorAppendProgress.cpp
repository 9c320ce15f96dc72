#include "engine/data/DatasetVector.h"

bool CDatasetVector::Append(CTxRecordset *source, bool flag, const QString &name, const CRect2D &bounds)
{
    Q_UNUSED(flag)
    CTxAppendDef def;
    def.tagField = name;
    def.bounds = bounds;
    return Append(source, def);
}
