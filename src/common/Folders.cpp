#include "common/TdCommMethods.h"
#include "common/TdFileChooser.h"
#include "common/TdModule.h"
#include "engine/base/TxToolkit.h"

#include <QCoreApplication>

QString CTdCommMethods::GetAppDir()
{
    QString drive;
    QString dir;
    QString name;
    QString extension;
    CTxToolkit::SplitPath(QCoreApplication::applicationFilePath(), drive, dir, name, extension);
    return drive + dir;
}

QString CTdCommMethods::GetFolder(QWidget *owner, const QString &initial, const QString &title)
{
    QWidget *parent = owner ? owner : CTdModule::GetMainWnd();
    return CTdFileChooser::GetCurrent().ChooseFolder(parent, initial, title).value_or(initial);
}
