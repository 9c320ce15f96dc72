#include "engine/data/DatasetVector.h"
#include "engine/ui/TxDlgProgress.h"

#include <QApplication>

bool CDatasetVector::Append(CTxRecordset *source, bool flag, const QString &name, const CRect2D &bounds)
{
    CTxAppendDef def;
    def.tagField = name;
    def.bounds = bounds;
    if (!flag || !CTxDlgProgress::IsAvailable())
        return Append(source, def);
    CTxDlgProgress window;
    window.SetShowDelay(CTxDlgProgress::usualDelay);
    window.SetWindowTitle(QGuiApplication::applicationDisplayName());
    window.SetTitleMessage(QCoreApplication::translate("TdCommon", "Appending records to “%1”").arg(GetName()));
    window.Create(QApplication::activeWindow());
    def.progress = window.GetProgress();
    return Append(source, def);
}
