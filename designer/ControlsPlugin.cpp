#include "ControlsPlugin.h"

#include "ControlEntry.h"
#include "ControlTable.h"

ControlsPlugin::ControlsPlugin(QObject *parent) : QObject(parent)
{
    for (const ControlRow &row : controlTable())
        m_entries.append(new ControlEntry(row, this));
}
