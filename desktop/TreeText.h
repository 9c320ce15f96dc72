#pragma once

#include <QString>

class CTxWorkspace;

/// The workspace tree as text, for machines without a display: a line an item, indented by lines of the box-drawing
/// characters; datasets with their kind and number of records, missing datasources at the end.
QString treeText(CTxWorkspace &workspace);
